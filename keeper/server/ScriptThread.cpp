#include "keeper/server/ScriptThread.h"

#include "support/BMLog.h"

namespace {

void runGuarded(const ScriptThread::Task &task) {
  try {
    task();
  } catch (const std::exception &exception) {
    BMLog("!!! a task of the script thread failed: %@", QString::fromUtf8(exception.what()));
  } catch (...) {
    BMLog("!!! a task of the script thread failed");
  }
}

}  // namespace

ScriptThread::ScriptThread() : thread([this] { run(); }) {}

ScriptThread::~ScriptThread() {
  finish();
}

void ScriptThread::post(Task task) {
  {
    const std::lock_guard guard(lock);
    if (finishing) return;
    tasks.push_back(std::move(task));
  }
  change.notify_one();
}

void ScriptThread::finish(Task last) {
  if (!thread.joinable()) return;
  {
    const std::lock_guard guard(lock);
    finishing = true;
    tasks.clear();
    if (last) tasks.push_back(std::move(last));
  }
  change.notify_one();
  thread.join();
}

void ScriptThread::run() {
  while (true) {
    Task task;
    {
      std::unique_lock guard(lock);
      change.wait(guard, [this] { return finishing || !tasks.empty(); });
      if (tasks.empty()) return;
      task = std::move(tasks.front());
      tasks.pop_front();
    }
    runGuarded(task);
  }
}
