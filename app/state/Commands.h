#pragma once

#include <QString>
#include <optional>

#include "values/Date.h"

/// What rooms ask of each other across the house. Main thread.
class Commands {
 public:
  virtual ~Commands() = default;
  /// Loads the library anew, after waiting for a library file newer than the date, if one is given.
  virtual void doGetDefaultLibraryWhenNewerThan(std::optional<Date> date) = 0;
  /// Loads the library and scans it, unless an operation runs.
  virtual void reloadLibraryAndScan() = 0;
  /// Scans the loaded library.
  virtual void doFindProblems() = 0;
  /// Scans the loaded library, or loads it first where none is loaded, unless an operation runs.
  virtual void scanLibraryForProblems() = 0;
  /// Has the music application start, waits until it answers, and scans.
  virtual void launchiTunesAndScanWhenReady() = 0;
  /// Asks for a media folder, and loads and scans anew with it.
  virtual void chooseNewMediaFolder() = 0;
  /// Gives each duplicate group from a row on its stripe.
  virtual void setStripesForDupesFromIndex(qint32 index) = 0;
  /// Chooses the row of the information and the row of the audio in each duplicate group, or in those that
  /// two or more selected rows belong to.
  virtual void doAutomark() = 0;
  /// Notes that the settings of the marks have been applied as they are now.
  virtual void noteAppliedAutomarkValues() = 0;
  /// Merges the marked groups of duplicates, once the questions about it are answered.
  virtual void mergeMarkedDuplicates() {}
  /// Takes over what a process before this one saved of a merge that got stuck; false if there is nothing.
  [[nodiscard]] virtual bool readState() { return false; }
  /// Shows what was taken over and goes on with that merge.
  virtual void recoverFromReadState() {}
  /// Shows the counts of the four lists on their tabs.
  virtual void updateProblemNumbers() = 0;
  /// Shows the preferences window at a tab.
  virtual void revealPreferencesTab(const QString &identifier) = 0;
  /// Ends the application by the user's will.
  virtual void customTerminate() = 0;
  /// Saves what is to be remembered and ends the process, whatever else goes on.
  virtual void quitNow() = 0;
};
