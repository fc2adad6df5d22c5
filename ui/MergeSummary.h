#pragma once

#include "app/state/MergeState.h"

/// What a merge did, in numbers and in words for the user. A value, made from the merge's report.
struct MergeSummary {
  /// Files of one fate.
  struct Files {
    qint64 count = 0;
    qint64 bytes = 0;
  };
  qint64 mergedGroups = 0;
  /// Groups that the merge left before all was done.
  qint64 unfinishedGroups = 0;
  qint64 removedTracks = 0;
  /// Copies in the folder count as moved only where the file is no longer the library's.
  Files trashed, moved, deleted, collected, shared;
  /// The names of the playlists that were changed, each once, in the order of their change.
  QStringList playlists;
  std::vector<MergedGroup> groups;
  std::vector<MergeFailure> failures;
  /// The library before and after; nothing where it could not be counted.
  std::optional<MergeTotals> before, after;

  explicit MergeSummary(const MergeReport::Contents &report);

  /// A merge that was cancelled or refused before it did anything.
  bool isEmpty() const { return groups.empty() && failures.empty(); }
  /// One line: "12 groups merged, 340 MB put in the Trash".
  QString headline() const;
  /// Lines that tell of files, tracks and playlists, and of the library before and after.
  QStringList lines() const;

  /// What became of a file, in a few words.
  static QString words(const MergedGroup::Unkept &file);
};
