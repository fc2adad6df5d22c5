#include "support/RestServingThreads.h"

#include "support/Workers.h"
#include "tests/fixtures/TestPlatform.h"

using RestServingThreads = TestPlatform;

TEST_F(RestServingThreads, WhoComesAgainAndAgainIsServedEachTimeAndTimersWait) {
  int hops = 0, ticks = 0;
  time.startTimer(0.1, true, [&ticks] { ++ticks; });
  Workers workers;
  for (int i = 0; i < 2; ++i) {
    workers.detach(u"worker"_qs, [&] {
      for (int hop = 0; hop < 40; ++hop) time.postAndWait([&hops] { ++hops; });
    });
  }
  const double begin = time.now().seconds;
  restServingThreads(1);
  EXPECT_EQ(hops, 80);
  EXPECT_EQ(ticks, 0);
  EXPECT_NEAR(time.now().seconds - begin, 1, 0.001);
  workers.joinAll();
}
