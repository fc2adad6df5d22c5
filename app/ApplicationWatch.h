#pragma once

#include "platform/MainLoop.h"
#include "platform/Workspace.h"

struct AppState;
class Operation;

/// Watches the music application: what happens when it quits, and the wait for it to come up when a scan
/// needs it. Main thread.
class ApplicationWatch {
 public:
  ApplicationWatch(AppState &appState, Operation &currentOperation);
  ApplicationWatch(const ApplicationWatch &) = delete;
  ~ApplicationWatch();

  void startObservingAppChanges();
  void stopObservingAppChanges();
  /// Some application was launched or has ended: if it was the music application that ended, what runs is
  /// cancelled, and the user chooses whether it is to be opened again. `name` is for the log.
  void appChange(const QString &name);
  /// Starts the music application behind the progress sheet, and scans once it has answered for 5 seconds on
  /// end, or after 24 seconds regardless: then without it, and until the user scans anew.
  void launchiTunesAndScanWhenReady();

 private:
  void iTunesLaunchSheetDidEnd(int button);
  void launchiTunesCheckIfResponsive();
  void later(double seconds, MainLoop::Task task);

  AppState &state;
  Operation &operation;
  Workspace::Subscription subscription = 0;
  /// The next step of the wait, or of the answer to the alert.
  MainLoop::TimerID mLaunchiTunesResponsiveCheckTimer = 0;
  double mLaunchiTunesLastUnresponsiveTime = 0.0;
  double mLaunchiTunesGiveUpTime = 0.0;
};
