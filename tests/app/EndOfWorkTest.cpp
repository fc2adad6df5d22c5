#include <condition_variable>

#include "app/MainController.h"
#include "bridge/iTunesInterface.h"
#include "tests/fixtures/ScriptedView.h"
#include "tests/fixtures/TestPlatform.h"

namespace {

/// A music application that hangs: only breaking off ends a run.
class HungHost : public ScriptHost {
 public:
  ScriptOutcome run(const QString &) override {
    std::unique_lock guard(lock);
    change.wait(guard, [this] { return isBrokenOff; });
    ++ended;
    return {{}, ScriptFailure{-609, u"gone"_qs, 0, 0}};
  }
  void setBrokenOff(bool isBroken) override {
    const std::lock_guard guard(lock);
    isBrokenOff = isBroken;
    change.notify_all();
  }
  bool isBrokenOff = false;
  int ended = 0;

 private:
  std::mutex lock;
  std::condition_variable change;
};

class EndOfWork : public TestPlatform {
 protected:
  EndOfWork() : controller(view) {
    services.scriptHost = &host;
    setPlatform(services);
  }
  HungHost host;
  ScriptedView view;
  MainController controller;
};

}  // namespace

TEST_F(EndOfWork, AnApplicationThatHangsHoldsItUpForTenSecondsAndNoLonger) {
  AppState &state = controller.appState();
  const double begin = time.now().seconds;
  state.workers.detach(u"repair"_qs, [] {
    for (int i = 0; i < 3; ++i) EXPECT_FALSE(iTunesInterface::stringFromScript(u"return 1"_qs));
  });
  // Time passes where somebody sleeps.
  state.workers.detach(u"patient"_qs, [this] { time.sleep(9); });
  state.workers.detach(u"more patient"_qs, [this] { time.sleep(11); });
  state.endAllWork();
  EXPECT_EQ(host.ended, 3);
  EXPECT_NEAR(time.now().seconds - begin, 11, 0.5);
  EXPECT_TRUE(logContains(u"unanswered scripts are broken off"_qs));
  EXPECT_FALSE(host.isBrokenOff) << "the application itself is still to be asked to quit";
}
