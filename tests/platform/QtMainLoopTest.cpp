#include "platform/qt/QtMainLoop.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <thread>

namespace {

class QtMainLoopTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    static int count = 1;
    static char name[] = "tests", *arguments[] = {name, nullptr};
    if (!QCoreApplication::instance()) new QCoreApplication(count, arguments);
  }

  /// Lets Qt work until the test holds or a few seconds have passed.
  static bool wait(const std::function<bool()> &done) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (!done() && std::chrono::steady_clock::now() < end) {
      QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    }
    return done();
  }

  QtMainLoop loop;
  std::string story;
};

}  // namespace

TEST_F(QtMainLoopTest, PostsFromAThreadRunInOrderOnTheMainThread) {
  std::string expected;
  for (int number = 0; number < 500; ++number) expected += char('a' + number % 26);
  std::thread thread([&] {
    for (const char letter : expected) {
      loop.post([&, letter] {
        EXPECT_TRUE(loop.isMainThread());
        story += letter;
      });
    }
  });
  EXPECT_TRUE(wait([&] { return story.size() == expected.size(); }));
  thread.join();
  EXPECT_EQ(story, expected);
}

TEST_F(QtMainLoopTest, TasksAndTimersWaitForATaskWithALoopOfItsOwn) {
  loop.post([&] {
    story += "(";
    loop.post([&] { story += "b"; });
    loop.startTimer(0, false, [&] { story += "t"; });
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(30);
    while (std::chrono::steady_clock::now() < end) QCoreApplication::processEvents();
    loop.postAndWait([&] { story += "now"; });
    story += ")";
  });
  EXPECT_TRUE(wait([&] { return story.size() == 7; }));
  EXPECT_TRUE(story == "(now)tb" || story == "(now)bt") << story;
}

TEST_F(QtMainLoopTest, ATimerMayStopItselfAndOneStoppedWhileDueDoesNotRun) {
  MainLoop::TimerID timer = 0, other = 0;
  timer = loop.startTimer(0.001, true, [&] {
    story += "x";
    if (story.size() == 3) loop.stopTimer(timer);
  });
  loop.post([&] {
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(10);
    other = loop.startTimer(0.001, false, [&] { story += "!"; });
    while (std::chrono::steady_clock::now() < end) QCoreApplication::processEvents();
    loop.stopTimer(other);
  });
  EXPECT_TRUE(wait([&] { return story.size() >= 3; }));
  EXPECT_FALSE(loop.startTimer(0.02, false, [&] { story += "."; }) == 0);
  EXPECT_TRUE(wait([&] { return story.ends_with('.'); }));
  EXPECT_EQ(story, "xxx.");
}

TEST_F(QtMainLoopTest, AWaiterIsLetGoWhenTheTaskThrowsAndWhenTheLoopEnds) {
  auto ending = std::make_unique<QtMainLoop>();
  std::atomic<int> returned = 0;
  std::thread first([&] {
    loop.postAndWait([] { throw 7; });
    ++returned;
  });
  loop.serveUntil([&] { return returned == 1; });
  std::thread second([&] {
    ending->postAndWait([&] { story += "never"; });
    ++returned;
  });
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  ending.reset();
  first.join();
  second.join();
  EXPECT_EQ(returned, 2);
  EXPECT_EQ(story, "");
}
