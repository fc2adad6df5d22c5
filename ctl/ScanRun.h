#pragma once

#include "ctl/EventLoop.h"
#include "ctl/ScanRequest.h"
#include "ctl/TerminalView.h"
#include "program/Application.h"

/// An application of its own that loads a library and looks for problems in it, as the window's does. Main
/// thread, inside a `Session`.
class ScanRun {
 public:
  /// Both outlive it.
  ScanRun(const LoopRunner &loopRunner, Terminal &terminal);
  ScanRun(const ScanRun &) = delete;

  /// Sets what was asked for, loads, scans and waits for the end. False if it failed; the user has been told.
  [[nodiscard]] bool scan(const ScanRequest &request);
  /// Has every group marked by the preferences, also where a scan leaves that to the user.
  void ensureMarks();
  /// Waits until the test holds, with progress and interruptions as in a scan.
  void wait(const std::function<bool()> &done);

  bool isInterrupted() const { return shown.isInterrupted(); }
  bool hasSongs() { return !put.state().library.mMusicLibrarySortedTracks.isEmpty(); }
  TerminalView &view() { return shown; }
  Application &application() { return put; }

 private:
  const LoopRunner &runLoop;
  Terminal &lines;
  TerminalView shown;
  Application put;
};
