#pragma once

#include <QtGlobal>
#include <functional>

/// The one event loop: timers, and work that other threads hand to the main thread.
class MainLoop {
 public:
  using Task = std::function<void()>;
  /// 0 is no timer.
  using TimerID = quint64;

  virtual ~MainLoop() = default;
  /// Runs the task after each interval, or once after it. Main thread; the task runs there.
  virtual TimerID startTimer(double seconds, bool repeating, Task task) = 0;
  /// Ends a timer; an ended or unknown one is ignored. Main thread, from inside the timer's own task too.
  virtual void stopTimer(TimerID timer) = 0;
  /// Runs the task on a later turn of the loop, in the order of the calls. Any thread; does not wait.
  virtual void post(Task task) = 0;
  /// Runs the task on the main thread and waits for its end; on the main thread itself, at once.
  virtual void postAndWait(Task task) = 0;
  virtual bool isMainThread() const = 0;
  /// Runs posted tasks, but no timers, until the test holds; it is asked after each task and every few
  /// milliseconds. For the end of things, when the main thread waits for threads that may wait for it. Main
  /// thread, even from inside a task.
  virtual void serveUntil(const std::function<bool()> &done) = 0;
};
