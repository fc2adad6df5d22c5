#include "support/Workers.h"

#include <stdexcept>

#include "tests/fixtures/TestPlatform.h"

using WorkersTest = TestPlatform;

TEST_F(WorkersTest, WhatEscapesABodyIsLoggedAndStopsNobody) {
  Workers workers;
  EXPECT_TRUE(workers.detach(u"bad"_qs, [] { throw std::runtime_error("broken song"); }));
  EXPECT_TRUE(workers.detach(u"worse"_qs, [] { throw 7; }));
  workers.joinAll();
  EXPECT_TRUE(logContains(u"EXCEPTION in thread bad: broken song"_qs));
  EXPECT_TRUE(logContains(u"EXCEPTION in thread worse"_qs));
  EXPECT_EQ(workers.running(), 0);
}

TEST_F(WorkersTest, TheEndServesAWorkerThatWaitsForTheMainThread) {
  int served = 0;
  {
    Workers workers;
    for (int worker = 0; worker < 8; ++worker) {
      workers.detach(u"asks"_qs, [&] {
        platform().clock->sleep(30);
        platform().mainLoop->postAndWait([&] { ++served; });
      });
    }
  }
  EXPECT_EQ(served, 8);
  EXPECT_EQ(Workers::runningInProcess(), 0);
}

TEST_F(WorkersTest, AWorkerMayDetachAnother) {
  std::atomic<int> ran = 0;
  Workers workers;
  workers.detach(u"first"_qs, [&] {
    ++ran;
    workers.detach(u"second"_qs, [&] { ++ran; });
  });
  workers.joinAll();
  EXPECT_EQ(ran, 2);
}
