#include "support/Workers.h"

#include <system_error>

#include "platform/Platform.h"
#include "support/BMLog.h"

namespace {

std::atomic<int> inProcess = 0;

void runGuarded(const QString &name, const std::function<void()> &body) noexcept {
  try {
    body();
  } catch (const std::exception &exception) {
    BMLog("!!! EXCEPTION in thread %@: %s", name, exception.what());
  } catch (...) {
    BMLog("!!! EXCEPTION in thread %@", name);
  }
}

}  // namespace

Workers::~Workers() {
  joinAll();
}

bool Workers::detach(const QString &name, std::function<void()> body) {
  const std::lock_guard guard(lock);
  reap();
  const auto worker = workers.emplace(workers.end());
  ++inProcess;
  try {
    worker->thread = std::thread(
        [this, worker, name, work = std::move(body)]() mutable { run(worker, name, std::move(work)); });
    return true;
  } catch (const std::system_error &error) {
    --inProcess;
    workers.erase(worker);
    BMLog("!!! no thread for %@: %s", name, error.what());
    return false;
  }
}

void Workers::run(std::list<Worker>::iterator worker, const QString &name, std::function<void()> body) {
  runGuarded(name, body);
  // What the body owns goes before the worker counts as ended.
  body = nullptr;
  const std::lock_guard guard(lock);
  worker->ended = true;
  --inProcess;
  change.notify_all();
}

void Workers::reap() {
  for (auto worker = workers.begin(); worker != workers.end();) {
    if (worker->ended) {
      // Its last step was to let go of the lock that is held here, so this does not wait on its body.
      worker->thread.join();
      worker = workers.erase(worker);
    } else {
      ++worker;
    }
  }
}

void Workers::joinAll() {
  MainLoop *loop = platform().mainLoop;
  if (loop && loop->isMainThread() && running() > 0) loop->serveUntil([this] { return running() == 0; });
  std::unique_lock guard(lock);
  change.wait(guard, [this] {
    return std::all_of(workers.begin(), workers.end(), [](const Worker &worker) { return worker.ended; });
  });
  reap();
}

bool Workers::waitForAll(double seconds) {
  const Clock &clock = *platform().clock;
  const double deadline = clock.now().seconds + seconds;
  platform().mainLoop->serveUntil([&] { return running() == 0 || clock.now().seconds >= deadline; });
  return running() == 0;
}

int Workers::running() const {
  const std::lock_guard guard(lock);
  return int(
      std::count_if(workers.begin(), workers.end(), [](const Worker &worker) { return !worker.ended; }));
}

int Workers::runningInProcess() {
  return inProcess;
}
