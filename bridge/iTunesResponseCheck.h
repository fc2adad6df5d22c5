#pragma once

#include <QString>
#include <mutex>
#include <optional>

#include "platform/ScriptHost.h"

/// One wait for the music application that may be in vain: the thread that hangs on the application works on
/// this object, and whoever waits looks at it and may walk away. Held by both sides, so that it lives until
/// the thread has come back, if ever.
class iTunesResponseCheck {
 public:
  /// Runs a script text and stores its outcome as the very last step; a text that no script could be made of
  /// leaves nothing. On a thread of its own.
  void threadediTunesScriptExecution(const QString &source);

  /// How the script ended: with a result or with a failure. Nothing until it is over. Any thread.
  std::optional<ScriptOutcome> resultDescriptor() const;

  /// Asks the application for its version and notes whether it answered. On a thread of its own.
  void threadediTunesResponseCheck();

 private:
  mutable std::mutex lock;
  // Guarded by lock.
  std::optional<ScriptOutcome> mResult;
};
