#include "support/Workers.h"
#include "tests/fixtures/TestPlatform.h"

using VirtualTimeTest = TestPlatform;

TEST_F(VirtualTimeTest, TimersAndSleepersMeetInTheOrderOfTime) {
  QStringList story;
  Workers workers;
  time.startTimer(0.5, true, [&] { story += u"tick"_qs; });
  workers.detach(u"sleeper"_qs, [&] {
    time.sleep(0.7);
    time.postAndWait([&] { story += u"woke"_qs; });
    time.sleep(140);
    time.post([&] { story += u"late"_qs; });
  });
  const Date start = time.now();
  EXPECT_TRUE(time.runUntil([&] { return story.contains(u"late"_qs); }));
  EXPECT_EQ(story.indexOf(u"woke"_qs), 1);
  EXPECT_EQ(story.count(u"tick"_qs), 281);
  EXPECT_NEAR(time.now().seconds - start.seconds, 140.7, 1e-6);
}

TEST_F(VirtualTimeTest, TheMainThreadsSleepLetsWorkersWorkAndWake) {
  std::atomic<bool> finished = false;
  Workers workers;
  workers.detach(u"works"_qs, [&] {
    time.sleep(0.3);
    finished = true;
  });
  int turns = 0;
  while (!finished && turns < 100) {
    time.sleep(0.2);
    ++turns;
  }
  EXPECT_EQ(turns, 2);
}

TEST_F(VirtualTimeTest, WhatNeverHappensEndsTheWait) {
  EXPECT_FALSE(time.runUntil([] { return false; }));
  time.startTimer(1, true, [] {});
  EXPECT_FALSE(time.runUntil([] { return false; }, 100));
}
