#pragma once

#include <QString>
#include <condition_variable>
#include <functional>
#include <list>
#include <mutex>
#include <thread>

/// Owns worker threads: all have ended when this is gone. Any thread may detach; a worker may detach others.
class Workers {
 public:
  Workers() = default;
  /// Joins.
  ~Workers();
  Workers(const Workers &) = delete;
  Workers &operator=(const Workers &) = delete;

  /// Runs the body on a thread of its own. What escapes it is caught and logged under the name. A thread that
  /// cannot be had is logged, and the answer is false.
  bool detach(const QString &name, std::function<void()> body);

  /// Waits until no worker of this owner runs. On the main thread, work that workers hand to the main thread
  /// is served meanwhile, so that none waits for ever. Not from a worker.
  void joinAll();
  /// Waits in the same way, but no longer than so many seconds; true if no worker runs any more. Main thread.
  bool waitForAll(double seconds);

  /// How many workers of this owner have not ended.
  int running() const;

  /// How many workers of all owners have not ended.
  static int runningInProcess();

 private:
  struct Worker {
    std::thread thread;
    bool ended = false;
  };
  void run(std::list<Worker>::iterator worker, const QString &name, std::function<void()> body);
  void reap();

  mutable std::mutex lock;
  std::condition_variable change;
  std::list<Worker> workers;
};
