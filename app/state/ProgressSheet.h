#pragma once

#include "platform/MainLoop.h"

struct AppState;

/// The one progress sheet's beginning and ending. Main thread.
class ProgressSheet {
 public:
  explicit ProgressSheet(AppState &appState) : state(appState) {}
  ProgressSheet(const ProgressSheet &) = delete;
  ~ProgressSheet();

  /// Begins the sheet on the problem window. Keeps it where it is if its delayed end is pending; does nothing
  /// if the window has a sheet already or the application is being replaced.
  void displayProgressSheet();
  /// Ends the sheet a quarter of a second from now, so that the next operation may keep it.
  void endProgressSheet();
  /// Ends the sheet now.
  void endProgressSheetImmediately();
  bool isShown() const { return shown; }

 private:
  void stopDismissTimer();

  AppState &state;
  MainLoop::TimerID mSheetDismissTimer = 0;
  bool shown = false;
};
