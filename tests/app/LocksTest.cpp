#include <gtest/gtest.h>

#include <thread>

#include "app/state/AppState.h"
#include "app/state/ObjectLocks.h"
#include "app/state/Operation.h"
#include "tests/fixtures/ScriptedView.h"
#include "tests/fixtures/TestPlatform.h"

using Locks = TestPlatform;

TEST_F(Locks, ClearingWaitsForTheHolder) {
  ObjectLocks locks;
  const int object = 0;
  const ObjectLock lock = locks.threadLockForObject(&object);
  std::atomic<bool> held{false}, released{false};
  std::thread holder([&] {
    std::lock_guard guard(*lock);
    held = true;
    std::this_thread::yield();
    released = true;
  });
  while (!held) std::this_thread::yield();
  locks.clearAllLocks();
  EXPECT_TRUE(released);
  holder.join();
}

TEST_F(Locks, AProgressSheetAboutToEndIsKeptForTheNextOperation) {
  ScriptedView view;
  AppState state(view);
  ProgressSheet sheet(state);
  sheet.displayProgressSheet();
  sheet.endProgressSheet();
  time.run(0.2);
  sheet.displayProgressSheet();
  time.run(1.0);
  EXPECT_EQ(view.calls, QStringList{QStringLiteral("beginProgress")});
  sheet.endProgressSheet();
  time.run(0.3);
  EXPECT_FALSE(view.progressShown);
  view.otherSheet = true;
  sheet.displayProgressSheet();
  EXPECT_FALSE(view.progressShown);
  view.otherSheet = false;
  state.mWantsToTerminate = true;
  sheet.displayProgressSheet();
  EXPECT_FALSE(view.progressShown);
}
