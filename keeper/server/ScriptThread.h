#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

/// The one thread that the library and its scripts live on: what it is given runs one after another, in
/// order.
class ScriptThread {
 public:
  using Task = std::function<void()>;

  ScriptThread();
  ScriptThread(const ScriptThread &) = delete;
  /// As `finish`.
  ~ScriptThread();

  /// Any thread; does not wait. What escapes a task is logged and goes no further.
  void post(Task task);
  /// Lets the task that runs now end, then runs `last`, and nothing else any more. Waits for it. Not from a
  /// task.
  void finish(Task last = {});

 private:
  void run();

  std::mutex lock;
  std::condition_variable change;
  // Guarded by lock.
  std::deque<Task> tasks;
  bool finishing = false;

  std::thread thread;
};
