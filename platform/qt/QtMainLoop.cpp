#include "platform/qt/QtMainLoop.h"

#include <QCoreApplication>
#include <QThread>
#include <QTimer>
#include <cmath>

namespace {

const QEvent::Type kWaiting = QEvent::Type(QEvent::registerEventType());

/// What a thread waits on for a task that it has posted.
struct Ticket {
  std::mutex lock;
  std::condition_variable change;
  bool finished = false;

  void wait() {
    std::unique_lock guard(lock);
    change.wait(guard, [this] { return finished; });
  }
};

/// Finishes the ticket when the task that owns this has been run, and when it is dropped and never will be.
struct TicketOwner {
  std::shared_ptr<Ticket> ticket;
  explicit TicketOwner(std::shared_ptr<Ticket> owned) : ticket(std::move(owned)) {}
  TicketOwner(const TicketOwner &) = delete;
  ~TicketOwner() {
    const std::lock_guard guard(ticket->lock);
    ticket->finished = true;
    ticket->change.notify_all();
  }
};

}  // namespace

QtMainLoop::QtMainLoop() = default;

QtMainLoop::~QtMainLoop() {
  std::deque<Task> dropped;
  {
    const std::lock_guard guard(lock);
    closed = true;
    dropped.swap(tasks);
  }
}

MainLoop::TimerID QtMainLoop::startTimer(double seconds, bool repeating, Task task) {
  const TimerID id = ++lastTimer;
  Timer &timer = timers[id];
  timer.task = std::make_shared<Task>(std::move(task));
  timer.repeating = repeating;
  timer.clock = std::make_unique<QTimer>();
  timer.clock->setTimerType(Qt::PreciseTimer);
  timer.clock->setSingleShot(!repeating);
  QObject::connect(timer.clock.get(), &QTimer::timeout, this, [this, id] { timerFired(id); });
  const double milliseconds = std::clamp(std::ceil(seconds * 1000.0), 0.0, 2.0e9);
  timer.clock->start(int(milliseconds));
  return id;
}

void QtMainLoop::stopTimer(TimerID timer) {
  const auto found = timers.find(timer);
  if (found == timers.end()) return;
  // It may be this clock's own signal that is being answered.
  found->second.clock->stop();
  found->second.clock.release()->deleteLater();
  timers.erase(found);
}

void QtMainLoop::post(Task task) {
  {
    const std::lock_guard guard(lock);
    if (closed) return;
    tasks.push_back(std::move(task));
  }
  posted.notify_all();
  wake();
}

void QtMainLoop::postAndWait(Task task) {
  if (isMainThread()) return runGuarded(task);
  const auto ticket = std::make_shared<Ticket>();
  post([work = std::move(task), owner = std::make_shared<TicketOwner>(ticket)] { work(); });
  ticket->wait();
}

bool QtMainLoop::isMainThread() const {
  return QThread::currentThread() == thread();
}

void QtMainLoop::serveUntil(const std::function<bool()> &done) {
  using namespace std::chrono_literals;
  const bool inTask = std::exchange(busy, true);
  while (!done()) {
    if (runPosted()) continue;
    std::unique_lock guard(lock);
    posted.wait_for(guard, 5ms, [this] { return !tasks.empty(); });
  }
  busy = inTask;
  wake();
}

bool QtMainLoop::event(QEvent *event) {
  if (event->type() != kWaiting) return QObject::event(event);
  runWaiting();
  return true;
}

void QtMainLoop::wake() {
  QCoreApplication::postEvent(this, new QEvent(kWaiting));
}

void QtMainLoop::timerFired(TimerID timer) {
  const auto found = timers.find(timer);
  if (found == timers.end()) return;
  found->second.due = true;
  runWaiting();
}

void QtMainLoop::runWaiting() {
  if (busy) return;
  busy = true;
  const bool ranTimer = runDueTimer();
  const bool ranTask = runPosted();
  busy = false;
  if (ranTimer || ranTask) wake();
}

bool QtMainLoop::runPosted() {
  Task task;
  {
    const std::lock_guard guard(lock);
    if (tasks.empty()) return false;
    task = std::move(tasks.front());
    tasks.pop_front();
  }
  runGuarded(task);
  return true;
}

bool QtMainLoop::runDueTimer() {
  const auto due =
      std::find_if(timers.begin(), timers.end(), [](const auto &entry) { return entry.second.due; });
  if (due == timers.end()) return false;
  due->second.due = false;
  // The timer may be stopped by its own task, which must live until it returns.
  const std::shared_ptr<Task> task = due->second.task;
  if (!due->second.repeating) stopTimer(due->first);
  runGuarded(*task);
  return true;
}

void QtMainLoop::runGuarded(const Task &task) {
  try {
    task();
  } catch (const std::exception &exception) {
    qCritical("a task of the main loop failed: %s", exception.what());
  } catch (...) {
    qCritical("a task of the main loop failed");
  }
}
