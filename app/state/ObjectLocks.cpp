#include "app/state/ObjectLocks.h"

#include "platform/Platform.h"
#include "support/BMLog.h"

ObjectLock ObjectLocks::threadLockForObject(const void *identity) {
  if (!identity) return nullptr;
  std::lock_guard held(guard);
  for (const auto &[object, lock] : mMiscObjectLocks) {
    if (object == identity) return lock;
  }
  return mMiscObjectLocks.emplace_back(identity, std::make_shared<std::recursive_mutex>()).second;
}

void ObjectLocks::clearAllLocks() {
  const double begin = platform().clock->now().seconds;
  int freed = 0;
  for (;;) {
    ObjectLock last;
    {
      std::lock_guard held(guard);
      if (mMiscObjectLocks.empty()) break;
      last = mMiscObjectLocks.back().second;
    }
    last->lock();
    last->unlock();
    std::lock_guard held(guard);
    mMiscObjectLocks.pop_back();
    ++freed;
  }
  const double took = platform().clock->now().seconds - begin;
  if (took > 0.1) BMLog("clearAllLocks %d locks freed in %.2f seconds", freed, took);
}
