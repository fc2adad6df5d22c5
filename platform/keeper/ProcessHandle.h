#pragma once

#include <QtGlobal>

/// Holds on to a process of anybody's until it has ended: its number may then mean another. One thread.
class ProcessHandle {
 public:
  /// Nothing is known of a process that has ended already: it counts as ended.
  explicit ProcessHandle(qint64 processID);
  ProcessHandle(const ProcessHandle &) = delete;
  ~ProcessHandle();

  bool hasEnded() const;
  /// A handle that becomes readable when the process ends; -1 where the system has none.
  int descriptor() const { return handle; }

 private:
  const qint64 processID;
  int handle = -1;
};
