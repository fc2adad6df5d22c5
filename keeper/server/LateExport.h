#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>

/// Does a job on a thread of its own once nothing has changed for a while, or at once when asked. Any thread.
class LateExport {
 public:
  /// The job waits for `quiet`, but no longer than `longest` after the first change that it has not seen.
  LateExport(std::chrono::milliseconds quiet, std::chrono::milliseconds longest, std::function<void()> job);
  LateExport(const LateExport &) = delete;
  /// Waits for a job that runs; one that is still to come is dropped.
  ~LateExport();

  /// The quiet time begins anew.
  void noteChange();
  /// Does the job now, or once more after the one that runs. Does not wait.
  void startNow();

 private:
  using Moment = std::chrono::steady_clock::time_point;
  void run();

  const std::chrono::milliseconds quiet, longest;
  const std::function<void()> job;
  std::mutex lock;
  std::condition_variable change;
  // Guarded by lock.
  std::optional<Moment> due;
  Moment latest;
  bool ending = false;

  std::thread thread;
};
