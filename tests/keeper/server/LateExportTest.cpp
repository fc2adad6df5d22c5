#include "keeper/server/LateExport.h"

#include <gtest/gtest.h>

#include <semaphore>

using namespace std::chrono_literals;

namespace {

struct LateExportTest : ::testing::Test {
  bool ranOnce() { return ran.try_acquire_for(20s); }
  std::counting_semaphore<> ran{0}, goesOn{0};
};

}  // namespace

TEST_F(LateExportTest, AStreamOfChangesPutsItOffNoLongerThanAllowed) {
  LateExport late(1h, 20ms, [this] { ran.release(); });
  for (int round = 0; round < 2; ++round) {
    do late.noteChange();
    while (!ran.try_acquire_for(1ms));
  }
}

TEST_F(LateExportTest, OneThatIsAskedForRunsAtOnceAndAgainBehindTheOneThatRuns) {
  LateExport late(1h, 1h, [this] {
    ran.release();
    goesOn.acquire();
  });
  late.noteChange();
  EXPECT_FALSE(ran.try_acquire_for(5ms));
  late.startNow();
  ASSERT_TRUE(ranOnce());
  late.startNow();
  late.startNow();
  goesOn.release(2);
  EXPECT_TRUE(ranOnce());
  EXPECT_FALSE(ran.try_acquire_for(5ms)) << "one sees all that those before it asked for";
}
