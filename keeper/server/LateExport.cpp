#include "keeper/server/LateExport.h"

#include <algorithm>

using std::chrono::steady_clock;

LateExport::LateExport(std::chrono::milliseconds quiet_, std::chrono::milliseconds longest_,
                       std::function<void()> job_)
    : quiet(quiet_), longest(longest_), job(std::move(job_)), thread([this] { run(); }) {}

LateExport::~LateExport() {
  {
    const std::lock_guard guard(lock);
    ending = true;
  }
  change.notify_all();
  thread.join();
}

void LateExport::noteChange() {
  const std::lock_guard guard(lock);
  // The thread sleeps until the old moment and finds the new one: a stream of changes does not wake it.
  const bool sleeps = !due;
  const Moment now = steady_clock::now();
  if (sleeps) latest = now + longest;
  due = std::min(now + quiet, latest);
  if (sleeps) change.notify_all();
}

void LateExport::startNow() {
  const std::lock_guard guard(lock);
  due = latest = steady_clock::now();
  change.notify_all();
}

void LateExport::run() {
  std::unique_lock guard(lock);
  while (!ending) {
    if (!due) {
      change.wait(guard);
    } else if (steady_clock::now() < *due) {
      change.wait_until(guard, Moment(*due));
    } else {
      due.reset();
      guard.unlock();
      job();
      guard.lock();
    }
  }
}
