#pragma once

#include <QString>
#include <functional>

#include "repairs/MergePlan.h"
#include "repairs/MergeSettings.h"
#include "support/TaskGuard.h"

struct AppState;
class MergeSupervisor;
class Operation;
class PlaylistRepair;

/// Makes one track of each marked group of duplicates. The commands and their questions, on the main thread;
/// the work itself is `mergeMarkedDuplicatesThread`.
class MergeEngine {
 public:
  /// All outlive it.
  MergeEngine(AppState &appState, Operation &currentOperation, PlaylistRepair &playlistRepair);
  MergeEngine(const MergeEngine &) = delete;
  /// What is called at every tick of a run; set once while the application is put together.
  void setSupervisor(MergeSupervisor *mergeSupervisor) { supervisor = mergeSupervisor; }

  /// The command: asks what must be asked, then begins.
  void mergeMarkedDuplicates();
  /// Starts a run over the marked groups of the list, without questions.
  void beginMergeMarkedDuplicates();
  /// True if unkept files are to go to a folder and there is none, or it cannot be read.
  bool haveUnkeptFolderPathProblem() const;
  /// The policy was changed, or a merge needs its folder: asks for one if `haveUnkeptFolderPathProblem`.
  void changedMergeDupeUnkeptAction();
  /// A folder was chosen, or not (empty).
  void chooseUnkeptPanelDidEnd(const QString &folder);

 private:
  void mergeMarkedDuplicatesThread();

  AppState &state;
  Operation &operation;
  PlaylistRepair &playlists;
  MergeSupervisor *supervisor = nullptr;
  TaskGuard tasks;
};
