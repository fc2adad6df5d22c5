#pragma once

#include <QString>
#include <functional>
#include <optional>
#include <vector>

#include "app/state/ProblemView.h"
#include "platform/MainLoop.h"
#include "repairs/MergeSettings.h"
#include "support/TaskGuard.h"

struct AppState;
class ApplicationWatch;
class DuplicateGroups;
class Operation;
class SavedState;

/// Watches a merge from the main thread: shows its progress, looks for a stall, ends the run, and turns what
/// failed into a message or a new attempt. Its waits hold the main thread up by design, so that no command
/// arrives while a run is torn down; workers that wait for the main thread are served meanwhile.
class MergeSupervisor {
 public:
  /// What it speaks to; all outlive it.
  struct Rooms {
    AppState &state;
    Operation &operation;
    SavedState &saved;
    DuplicateGroups &groups;
    ApplicationWatch &watch;
    /// The merge's command, with its questions, and a run without them.
    std::function<void()> mergeMarkedDuplicates;
    std::function<void()> beginMergeMarkedDuplicates;
    /// True until the thread of the run in hand has ended, between its steps too.
    std::function<bool()> isWorking;
    /// What the run in hand was begun with.
    std::function<MergeSettings()> settingsOfRun;
    /// What a "broken:" text of the playlist repair tells.
    std::function<Dictionary(const QString &)> playListReplaceErrorDictionary;
  };
  explicit MergeSupervisor(Rooms theRooms) : rooms(std::move(theRooms)) {}
  MergeSupervisor(const MergeSupervisor &) = delete;
  ~MergeSupervisor();

  /// One tick: at the start of a run and every half second until it has ended.
  void updateMergeMarkedDuplicatesProgress();
  /// The button of the sheet that tells of a file that could not be trashed.
  void dismissTrashFailureSheet();

  /// Ends the process at once, with an exit code; what must be saved has been. Does not come back but in
  /// tests.
  std::function<void(int)> endProcess;

 private:
  bool isEnding() const;

  // The parts of a tick.
  void noteCounting();
  void showFinishedRows();
  float stalledSeconds() const;
  [[nodiscard]] bool resolveStall(float seconds);
  void showRunning();
  void endRun();

  void startOverWithMusicApplication();
  void replaceProcess();
  void relaunchMusicApplication();
  void quitBecause(const QString &keyStem);

  void showCurrentTitle();
  void showCurrentAction();

  [[nodiscard]] bool waitForStep();
  [[nodiscard]] bool hasWorkerEnded();
  void removeTemporaryPlaylists();
  [[nodiscard]] bool reportReason(const QString &reason, std::vector<Alert> &sheets);
  void distrustLocations(const Dictionary &brokenDetails);
  void retry(const QString &reason);
  void showSheets(std::vector<Alert> sheets);
  void mergeAgainLater();
  void mergeAgain();
  void tellEnd();

  Rooms rooms;
  QString lastTitleShown;
  qint32 lastActionShown = 0;
  /// `MergeState::countingSteps` as a tick saw it last.
  qint64 lastCountingSteps = 0;
  /// Since when a run that is over waits for its thread.
  std::optional<double> waitsSince;
  MainLoop::TimerID mergeAgainTimer = 0;
  TaskGuard tasks;
};
