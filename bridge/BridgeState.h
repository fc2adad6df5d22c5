#pragma once

#include <QString>
#include <atomic>
#include <mutex>

#include "support/Workers.h"
#include "values/Value.h"

/// What the conversation with the music application remembers, one for the process. Flags and numbers that
/// several threads touch have no lock: a value that is a moment old does no harm.
struct BridgeState {
  static constexpr int kUnknown = -1;

  /// Excludes untimed scripts from each other; entered twice by one thread.
  std::recursive_mutex untimedScripts;
  /// Set by whoever holds `untimedScripts`, for those who must not wait for it.
  std::atomic<bool> untimedScriptRuns = false;
  /// Excludes timed scripts from each other, but not from untimed ones.
  std::recursive_mutex timedScripts;
  std::atomic<qint64> lastScriptErrorNumber = 0;
  std::atomic<bool> cancelRequest = false;

  /// 1 the last probe was answered, 0 one is in flight, -1 it failed or none has run.
  std::atomic<int> responseState = kUnknown;
  /// 1 running, 0 not running, -1 not known.
  std::atomic<int> runningState = kUnknown;
  std::atomic<int> majorVersion = kUnknown;

  std::mutex resources;
  // Guarded by resources: the compiled library's path once found, and the texts of named scripts, null until
  // they could be read.
  QString libraryPath;
  Dictionary scriptTable;

  /// The threads of timed scripts and of probes. One that hangs with the music application is abandoned here:
  /// nothing waits for it at the end of the process.
  Workers abandoned;
};

/// Never destroyed, as abandoned threads may outlive all else.
BridgeState &bridgeState();

/// Forgets everything, as at the start of the process, once all scripts have come back. Main thread, in
/// tests.
void resetBridge();
