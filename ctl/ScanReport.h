#pragma once

#include <optional>
#include <vector>

#include "app/state/AppState.h"
#include "ctl/JsonWriter.h"
#include "ctl/Options.h"
#include "ctl/Terminal.h"

/// What a scan found, told as JSON or for reading. A snapshot of the lists; later changes of them do not
/// show.
class ScanReport {
 public:
  /// With `only` the report is about that kind of problem alone. Main thread, no scan running.
  ScanReport(const AppState &state, std::optional<ProblemTab> only);

  /// Tells it in the form that "--json" asks for: one object, with "--rows" of whole rows in place of
  /// persistent IDs, names and paths. True if the kinds of problem told about have any.
  bool print(const Options &options, Terminal &terminal) const;

 private:
  bool tellsOf(ProblemTab tab) const { return !only || *only == tab; }
  bool hasProblems() const;
  void printJson(bool fullRows, Terminal &terminal) const;
  void writeDuplicates(bool fullRows, JsonWriter *json) const;
  void printText(Terminal &terminal) const;
  void printGroups(Terminal &terminal) const;
  void printNames(Terminal &terminal) const;
  void printCounts(Terminal &terminal) const;

  const std::optional<ProblemTab> only;
  qsizetype tracks = 0;
  Array lists[kProblemTabCount];
  /// The rows of the duplicates' list by group.
  std::vector<Array> groups;
};
