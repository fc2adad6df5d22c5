#pragma once

#include <QStringList>
#include <optional>

#include "app/state/MergeState.h"
#include "repairs/MergeSettings.h"

/// The proof of a merge: what the library counts, and what must hold between the counts before and behind it.
/// Any thread.
namespace libraryTotals {

/// Counts the library as it is now, by direct access, and looks at each track's file once. Nothing without
/// direct access, or if it breaks off.
std::optional<MergeTotals> count();

/// A total that is not what it must be.
struct Violation {
  /// The key of its name: "MergeTotalTracks" and the like.
  QString nameKey;
  qint64 expected = 0, found = 0;
};
/// What is wrong behind a merge that did what the report says. Empty if one of the counts is missing.
std::vector<Violation> violations(const MergeReport::Contents &report, const MergeSettings &settings);

/// Counts behind a run, and puts what is wrong among the report's failures.
void prove(MergeReport &report, const MergeSettings &settings);

}  // namespace libraryTotals
