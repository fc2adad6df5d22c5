#pragma once

#include <QString>
#include <functional>

struct AppState;
class DuplicateGroups;

/// Where a merge stands, on disk, so that a new process can go on with it. Main thread.
class SavedState {
 public:
  SavedState(AppState &appState, DuplicateGroups &duplicateGroups)
      : state(appState), groups(duplicateGroups) {}
  SavedState(const SavedState &) = delete;

  /// The state file, in the system's temporary folder.
  static QString statePath();
  /// Writes the four lists and the counters; false with a line in the log if it cannot, or if five restarts
  /// in a row have finished nothing.
  [[nodiscard]] bool writeState();
  bool readStateExists() const;
  /// Takes the state file's lists and counters over if it is younger than four minutes. The file is deleted
  /// whatever comes of it.
  [[nodiscard]] bool readState();
  /// Shows the lists as they were read and goes on with the merge, without a question.
  void recoverFromReadState();
  /// Starts the tool that opens the application again once this process has ended. False if it does not run.
  [[nodiscard]] bool prepareRelaunch();

  /// Saves what is to be remembered and ends the log; set while the application is put together.
  std::function<void()> applicationWillTerminate;
  /// Presents the lists without marking them anew, then begins the merge.
  std::function<void()> revealAndMerge;

 private:
  AppState &state;
  DuplicateGroups &groups;
};
