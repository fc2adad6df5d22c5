#pragma once

#include <QSocketNotifier>
#include <functional>
#include <memory>

/// Turns the signals by which a system ends a program (SIGTERM, SIGINT, SIGHUP) into a call on the main
/// thread. One at a time, behind the application object.
class TerminationSignals {
 public:
  explicit TerminationSignals(std::function<void()> terminate);
  TerminationSignals(const TerminationSignals &) = delete;
  /// The signals have their usual meaning again.
  ~TerminationSignals();

 private:
  int sockets[2] = {-1, -1};
  std::unique_ptr<QSocketNotifier> notifier;
};
