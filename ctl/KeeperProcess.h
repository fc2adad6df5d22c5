#pragma once

#include <chrono>
#include <optional>

#include "ctl/Terminal.h"
#include "platform/ScriptHost.h"
#include "platform/keeper/KeeperPlace.h"
#include "platform/keeper/ProcessHandle.h"

/// Music Keeper's process, started and ended for a command. Main thread.
class KeeperProcess {
 public:
  /// The keeper of this user, by the folders of the platform in force.
  KeeperProcess();

  /// True while one holds the user's lock, whether it answers or not.
  bool isRunning() const;
  /// Has it run and answer. False with a message if it does not.
  [[nodiscard]] bool start(Terminal &terminal) const;
  /// Waits until it has taken in its library, with a bar. False with a message if it goes away meanwhile.
  [[nodiscard]] bool waitForLibrary(Terminal &terminal) const;
  /// Asks it to quit and waits for its end. False with a message if it does not run or refuses, or has not
  /// ended within 10 seconds.
  [[nodiscard]] bool stop(Terminal &terminal) const;

 private:
  using Deadline = std::chrono::steady_clock::time_point;
  /// Has it told to quit before that time, if it can be spoken to; how it refused, if it did.
  std::optional<ScriptFailure> askToQuit(const ProcessHandle &process, Deadline end) const;

  const KeeperPlace place;
};
