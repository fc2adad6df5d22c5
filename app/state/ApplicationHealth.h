#pragma once

#include <atomic>

struct AppState;

/// What every update of an operation does about the music application: takes each result for proof of life,
/// asks in a silence whether it still answers, and ends where the system forbids to speak to it.
class ApplicationHealth {
 public:
  explicit ApplicationHealth(AppState &appState) : state(appState) {}

  /// Asks the application whether it answers, which may take 8 seconds, if so many seconds have passed since
  /// the last proof of life or question. Shows the warning view if it does not, hides it if it does, where
  /// the user wants to know of minor errors. Without a bridge nothing is asked. Main thread.
  void noteIfiTunesIsUnresponsiveAfterSecs(float seconds);
  /// True: a script has come back, or an item is done; the next question waits. Any thread; from another one
  /// than the main thread the warning view follows later.
  void setiTunesResponsive(bool responsive);
  /// Tells the user and ends the application if the system refused this program's scripts. Any thread;
  /// returns when the user has been told.
  void checkForUnauthorizedAppleEvents();

 private:
  void tellAndQuit();
  void showWarning(bool visible);

  AppState &state;
  std::atomic<double> mLastResponsivenessCheck{0.0};
  std::atomic<bool> told{false};
};
