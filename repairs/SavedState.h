#pragma once

#include <QString>
#include <functional>
#include <optional>

#include "values/Value.h"

struct AppState;
class DuplicateGroups;
struct SavedLists;

/// Where a merge stands, on disk, so that a new process can go on with it. Main thread.
class SavedState {
 public:
  SavedState(AppState &appState, DuplicateGroups &duplicateGroups);
  SavedState(const SavedState &) = delete;

  /// The state file, in the system's temporary folder.
  static QString statePath();
  /// Writes the four lists and the counters; false with a line in the log if it cannot, or if five restarts
  /// in a row have finished nothing. The group on top gets a new number: it is tried last.
  [[nodiscard]] bool writeState();
  /// True if there is a state file, usable or not.
  bool readStateExists() const;
  /// True if `readState` would take the state file over now. Changes nothing.
  bool isStateUsable() const;
  /// Takes the state file's lists and counters over if it is younger than four minutes. The file is deleted
  /// whatever comes of it. What does not look like a state of ours changes nothing.
  [[nodiscard]] bool readState();
  /// Shows the lists as they were read and goes on with the merge, without a question.
  void recoverFromReadState();
  /// Starts the tool that opens the application again once this process has ended, and then saves what is to
  /// be remembered. False with a line in the log if the tool does not run.
  [[nodiscard]] bool prepareRelaunch();

  /// Off for a program that cannot be opened again without its arguments: it neither writes nor reads nor
  /// deletes the state, which belongs to the window's.
  bool isUsed = true;
  /// What the tool opens: the application's executable, or its bundle.
  QString applicationPath;
  /// The tool, beside the executable.
  QString toolPath;
  /// Saves what is to be remembered and ends the log; set while the application is put together.
  std::function<void()> applicationWillTerminate;
  /// Presents the lists without marking them anew, then begins the merge.
  std::function<void()> revealAndMerge;

 private:
  Dictionary stateAsDictionary();
  bool store(const Dictionary &root);
  /// What the file says; nothing for one that is not to be taken over, with why in `problem` where that is
  /// worth telling.
  static std::optional<SavedLists> savedLists(QString *problem);
  void takeOver(const SavedLists &saved);

  AppState &state;
  DuplicateGroups &groups;
};
