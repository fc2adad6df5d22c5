#pragma once

#include <memory>
#include <mutex>

#include "platform/Platform.h"

/// Stands in front of the music application while it lives and keeps how the last script failed, for the user
/// to read. Main thread; scripts on any thread, also such as nobody waits for any more.
class ScriptWitness {
 public:
  ScriptWitness();
  ScriptWitness(const ScriptWitness &) = delete;
  ~ScriptWitness();

  /// The failure of the run that ended last; nothing if it had none, or none has ended.
  std::optional<ScriptFailure> failure() const;
  /// The stretch of its source that the failure names; null if it names none.
  QString offendingText() const;

 private:
  class Host;
  const Platform outer;
  /// Never destroyed: a script that was given up may come back to it.
  Host *const host;
};
