#pragma once

#include <vector>

#include "repairs/MergeJournal.h"
#include "repairs/MergeSettings.h"
#include "values/Value.h"

struct AppState;
class PlaylistRepair;

/// One run of a merge on its own thread: the groups by their numbers, until all are done or the run is
/// cancelled. It asks nobody; what stops it is a reason in the operation's state.
class MergeWorker {
 public:
  /// Both outlive it.
  MergeWorker(AppState &appState, PlaylistRepair &playlistRepair)
      : state(appState), playlists(playlistRepair) {}
  MergeWorker(const MergeWorker &) = delete;

  /// The thread's body. At its end `mCurrentThreadAction` is 0 and `mCompletedOperation` says whether the
  /// last group was reached.
  void mergeMarkedDuplicatesThread();

 private:
  qint64 highestGroup();
  void prepare(qint64 highest);
  /// The number of the group at which it stopped.
  qint64 walkGroups(qint64 highest);
  /// The rows of a group in the order of the table.
  std::vector<Dictionary> rowsOfGroup(qint64 number);

  AppState &state;
  PlaylistRepair &playlists;
  MergeJournal journal;
  MergeSettings settings;
};
