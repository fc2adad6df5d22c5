#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>

/// Does a job on a thread of its own once nothing has changed for a while. Any thread.
class LateExport {
 public:
  LateExport(std::chrono::milliseconds quiet, std::function<void()> job);
  LateExport(const LateExport &) = delete;
  /// Waits for a job that runs; one that is still to come is dropped.
  ~LateExport();

  /// The quiet time begins anew.
  void noteChange();
  /// Nothing is left to be done, until the next change.
  void forget();

 private:
  using Moment = std::chrono::steady_clock::time_point;
  void run();

  const std::chrono::milliseconds quiet;
  const std::function<void()> job;
  std::mutex lock;
  std::condition_variable change;
  // Guarded by lock.
  std::optional<Moment> due;
  bool ending = false;

  std::thread thread;
};
