#pragma once

#include <sys/types.h>

#include <string>

/// A process whose end is waited for. Once made it stands for that very process: an identifier that the
/// system gives to another one afterwards counts as its end. One thread.
class ProcessWait {
 public:
  /// A process that has ended, or was started later than this one (so that it cannot be the one that started
  /// this), counts as gone.
  explicit ProcessWait(pid_t process);
  ProcessWait(const ProcessWait &) = delete;
  ~ProcessWait();

  /// Returns once the process has ended, however long that takes; one that nobody has collected yet has
  /// ended too.
  void wait();

 private:
  void waitByAsking() const;

  pid_t identifier;
  bool gone = false;
  /// A handle that the system signals at the end; -1 where it gives none.
  int handle = -1;
  /// When the process was started, in the system's own text; empty where nobody tells.
  std::string started;
};
