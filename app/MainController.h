#pragma once

#include <QString>
#include <optional>

#include "app/ApplicationWatch.h"
#include "app/LaunchChecks.h"
#include "app/LibraryLoader.h"
#include "app/PrefsController.h"
#include "app/ScanDriver.h"
#include "app/state/AppState.h"
#include "app/state/Commands.h"
#include "app/state/Operation.h"

/// The application's one controller: launch, the rooms of load, settings and scan, and the ending. Lives
/// until the process ends. Main thread.
class MainController {
 public:
  explicit MainController(ProblemView &view);
  MainController(const MainController &) = delete;
  ~MainController();

  /// The launch: settings, windows, and, unless the user wants none, the first load and scan.
  void awakeFromNib();

  /// The cancel button: sets `mCancelOperation`; worker and timer do the rest. `sender` is for the log.
  void doCancelOperation(const char *sender);
  /// Ends every sheet and then the application, through `onTerminate`.
  void customTerminate();
  /// Saves what is to be remembered and ends the process, without asking what still runs.
  void quitNow();
  /// Saves what is to be remembered and ends the log. Once, at the end of the process.
  void applicationWillTerminate();
  /// The application is about to be replaced by an update: no sheet may be shown any more.
  void prepareForReplacement();
  /// The application gained or lost the focus.
  void applicationDidChangeFocus();

  /// Asks for a media folder, and loads and scans anew with it.
  void chooseNewMediaFolder();

  AppState &appState() { return state; }
  LibraryLoader &libraryLoader() { return loader; }
  ScanDriver &scanDriver() { return scans; }
  PrefsController &prefsController() { return prefsOwner; }
  ApplicationWatch &applicationWatch() { return watch; }
  LaunchChecks &launchChecks() { return checks; }
  Operation &currentOperation() { return operation; }

  /// Tells whether a process before this one has left a merge to go on with, for which the library is loaded
  /// whatever the user's settings are; nothing stands for no.
  std::function<bool()> isMergeToGoOn;
  /// What ends the process's event loop; set by whoever runs it.
  std::function<void()> onTerminate;
  /// The problem window's frame as text, asked for at the end; empty for none.
  std::function<QString()> problemWindowFrame;
  /// The preferences window's top-left point as text, asked for at the end; empty for none.
  std::function<QString()> prefsWindowOrigin;

 private:
  void logLaunch();
  bool checkMusicApplication();
  void setFirstValues();
  void tellIfSettingsAreNotKept();

  AppState state;
  Operation operation;
  PrefsController prefsOwner;
  LaunchChecks checks;
  LibraryLoader loader;
  ScanDriver scans;
  ApplicationWatch watch;
  bool ended = false;
  MainLoop::TimerID reloadTimer = 0;
};
