#pragma once

#include <QObject>
#include <condition_variable>
#include <deque>
#include <map>
#include <memory>
#include <mutex>

#include "platform/MainLoop.h"

class QTimer;

/// The main loop on Qt's event loop; made on the main thread after the application object.
///
/// One thing at a time: posted tasks and timers' tasks never run inside one another. While one of them holds
/// a nested event loop (a modal alert), the others wait: posted tasks in their order, a timer with at most
/// one run due. They go on when it has returned. So a task must not wait in a nested loop for another task;
/// the exceptions are `postAndWait` on the main thread, which calls at once, and `serveUntil`. What escapes a
/// task is reported on the console and goes no further.
class QtMainLoop : public QObject, public MainLoop {
 public:
  QtMainLoop();
  /// Tasks that have not run are dropped, and who waits for one goes on.
  ~QtMainLoop() override;

  TimerID startTimer(double seconds, bool repeating, Task task) override;
  void stopTimer(TimerID timer) override;
  void post(Task task) override;
  void postAndWait(Task task) override;
  bool isMainThread() const override;
  void serveUntil(const std::function<bool()> &done) override;

 protected:
  bool event(QEvent *event) override;

 private:
  struct Timer {
    std::unique_ptr<QTimer> clock;
    std::shared_ptr<Task> task;
    bool repeating = false;
    bool due = false;
  };
  void wake();
  void timerFired(TimerID timer);
  /// Runs what is posted and due, unless a task is running already.
  void runWaiting();
  bool runPosted();
  bool runDueTimer();
  void runGuarded(const Task &task);

  std::mutex lock;
  std::condition_variable posted;
  // Guarded by lock.
  std::deque<Task> tasks;
  bool closed = false;

  // Main thread only.
  std::map<TimerID, Timer> timers;
  TimerID lastTimer = 0;
  bool busy = false;
};
