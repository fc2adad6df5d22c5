#pragma once

#include <memory>
#include <mutex>
#include <utility>
#include <vector>

using ObjectLock = std::shared_ptr<std::recursive_mutex>;

/// One recursive lock for each shared list, found by the list's identity. Locks are made on the main thread
/// before any worker starts; workers only look them up.
class ObjectLocks {
 public:
  /// The lock of the object with this identity, made on first demand; null for no object.
  ObjectLock threadLockForObject(const void *identity);

  /// Forgets all locks, each after waiting for its holder. Main thread, while no worker is alive.
  void clearAllLocks();

 private:
  std::mutex guard;
  std::vector<std::pair<const void *, ObjectLock>> mMiscObjectLocks;
};
