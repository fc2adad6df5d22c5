#pragma once

#include <memory>

#include "platform/MainLoop.h"

/// A member of whoever hands tasks to the main loop: once its owner is gone, the tasks that still wait do
/// nothing. The owner lives and ends on the main thread.
class TaskGuard {
 public:
  TaskGuard() = default;
  TaskGuard(const TaskGuard &) = delete;
  TaskGuard &operator=(const TaskGuard &) = delete;

  /// The task as it may be posted. Any thread.
  MainLoop::Task guarded(MainLoop::Task task) const {
    return [watch = std::weak_ptr<const bool>(alive), work = std::move(task)] {
      if (!watch.expired()) work();
    };
  }

 private:
  const std::shared_ptr<const bool> alive = std::make_shared<const bool>(true);
};
