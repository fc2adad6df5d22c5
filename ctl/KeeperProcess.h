#pragma once

#include "ctl/Terminal.h"
#include "platform/keeper/KeeperPlace.h"

/// Music Keeper's process, started and ended for a command. Main thread.
class KeeperProcess {
 public:
  KeeperProcess();

  bool isRunning() const;
  /// Has it run and answer. False with a message if it does not.
  [[nodiscard]] bool start(Terminal &terminal) const;
  /// Waits until it has taken in its library, with a bar. False with a message if it goes away meanwhile.
  [[nodiscard]] bool waitForLibrary(Terminal &terminal) const;
  /// Asks it to quit and waits for its end. False with a message if it does not run or refuses.
  [[nodiscard]] bool stop(Terminal &terminal) const;

 private:
  const KeeperPlace place;
};
