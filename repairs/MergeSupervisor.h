#pragma once

#include <QString>

#include "support/TaskGuard.h"

struct AppState;
class ApplicationWatch;
class DuplicateGroups;
class MergeEngine;
class Operation;
class PlaylistRepair;
class SavedState;

/// Watches a merge from the main thread: shows its progress, looks for a stall, ends the run, and turns what
/// failed into a message or a new attempt.
class MergeSupervisor {
 public:
  /// What it speaks to; all outlive it.
  struct Rooms {
    AppState &state;
    Operation &operation;
    MergeEngine &engine;
    PlaylistRepair &playlists;
    SavedState &saved;
    DuplicateGroups &groups;
    ApplicationWatch &watch;
  };
  explicit MergeSupervisor(const Rooms &theRooms) : rooms(theRooms) {}
  MergeSupervisor(const MergeSupervisor &) = delete;

  /// One tick: at the start of a run and every half second until it has ended.
  void updateMergeMarkedDuplicatesProgress();
  /// The button of the sheet that tells of a file that could not be trashed.
  void dismissTrashFailureSheet();

 private:
  Rooms rooms;
  TaskGuard tasks;
};
