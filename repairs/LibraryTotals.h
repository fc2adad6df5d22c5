#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "app/state/MergeState.h"
#include "repairs/MergeSettings.h"

/// The proof of a merge: what the library counts, and what must hold between the counts before and behind it.
/// Any thread.
namespace libraryTotals {

/// Asked with each track while a count goes on; false ends it.
using GoesOn = std::function<bool()>;

/// Counts the library as it is now, by direct access, and looks at each track's file once. Nothing without
/// direct access, or if it is ended or breaks off.
std::optional<MergeTotals> count(const GoesOn &goesOn);

/// A total that is not what the merge alone would have made it.
struct Difference {
  /// The key of its name: "MergeTotalTracks" and the like.
  QString nameKey;
  qint64 expected = 0, found = 0;
  /// Something is lost. More than was expected is what others have added meanwhile.
  bool isLoss() const { return found < expected; }
};
/// What differs behind a merge that did what the report says. Empty if one of the counts is missing.
std::vector<Difference> differences(const MergeReport::Contents &report, const MergeSettings &settings);

/// Counts behind a run: what is lost is put among the report's failures, what was added goes into the log. A
/// count that is ended leaves the report without one.
void prove(MergeReport &report, const MergeSettings &settings, const GoesOn &goesOn);

}  // namespace libraryTotals
