#pragma once

#include <QtGlobal>

#include "repairs/MergeJournal.h"
#include "repairs/MergeSettings.h"

struct AppState;
class GroupRows;
struct MergeRooms;
class PlaylistRepair;

/// One run of a merge on its own thread: the groups by their numbers, until all are done or the run is
/// cancelled. It asks nobody; what stops it is a reason in the operation's state.
class MergeWorker {
 public:
  /// Both outlive it.
  MergeWorker(AppState &appState, PlaylistRepair &playlistRepair)
      : state(appState), playlists(playlistRepair) {}
  MergeWorker(const MergeWorker &) = delete;

  /// The thread's body. At its end, however it comes to it, `mCurrentThreadAction` is 0;
  /// `mCompletedOperation` says whether the last group was reached. What is thrown in a group is told of that
  /// group, and the next one goes on; what is thrown elsewhere stops the run with a reason.
  void mergeMarkedDuplicatesThread();

 private:
  void prepare(qint64 highest);
  /// False, with the reason, if the journal of plays cannot be had: then no merge begins.
  bool takeJournal();
  /// The number of the group at which it stopped.
  qint64 walkGroups(const GroupRows &groups);
  void mergeGroup(const MergeRooms &rooms, qint64 number);
  void prove();
  /// True until the run is cancelled; each question is a sign of life.
  bool goesOnCounting();

  AppState &state;
  PlaylistRepair &playlists;
  MergeJournal journal;
  MergeSettings settings;
};
