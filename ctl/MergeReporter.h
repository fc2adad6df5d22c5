#pragma once

#include <optional>

#include "app/state/MergeState.h"
#include "ctl/JsonWriter.h"
#include "ctl/Terminal.h"
#include "repairs/MergePlan.h"

/// Tells of a merge, what it will do and what it did, as JSON or for reading.
class MergeReporter {
 public:
  /// The plan outlives it.
  explicit MergeReporter(const MergePlan &mergePlan) : plan(mergePlan) {}

  /// What each group will be, and the numbers of all of them.
  void printPlan(Terminal &terminal) const;
  /// What was done in numbers, the failures as messages.
  static void printOutcome(const MergeReport::Contents &outcome, Terminal &terminal);

  /// {"plan": {"policy", "folder", "playlistsKnown", "groups": [GROUP...], "rows", "bytes"}, "outcome": null
  /// or
  /// {"groups": [MERGED...], "totals": {"before", "after"}, "failures": [{"title", "path", "reason"}...]}}.
  /// A GROUP is {"group", "title", "kept", "info", "removed": [PID...], "files": [FILE...], "playlists":
  /// [{"pid", "name", "entries", "huge"}...], "missing": a path, or null if the group takes part}; a MERGED
  /// is
  /// {"title", "kept", "info", "path": the kept file's, "removed", "files", "playlists": [NAME...],
  /// "complete"}; a FILE is {"pid", "path", "bytes", "fate"}, of a merged group with "newPath" and "removed"
  /// too. Totals that could not be counted are null.
  void printJson(const std::optional<MergeReport::Contents> &outcome, Terminal &terminal) const;

 private:
  void printGroup(const GroupPlan &group, Terminal &terminal) const;
  void writePlan(JsonWriter *json) const;
  static void writeGroup(const GroupPlan &group, JsonWriter *json);
  static void writeMerged(const MergedGroup &group, JsonWriter *json);
  static void writeOutcome(const MergeReport::Contents &outcome, JsonWriter *json);

  const MergePlan &plan;
};
