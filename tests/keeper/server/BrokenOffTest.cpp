#include <thread>

#include "platform/keeper/KeeperScriptHost.h"
#include "tests/keeper/server/ServiceFixture.h"

namespace {

class BrokenOff : public ServiceFixture {};

}  // namespace

TEST_F(BrokenOff, RunsFailAtOnceAndTheNextOnesWaitAgain) {
  KeeperScriptHost host(place, std::nullopt);
  ScriptOutcome waiting;
  std::thread asking([&] { waiting = host.run(QStringLiteral("wait")); });
  EXPECT_TRUE(eventually([this] { return engine.ran == 1; }));
  host.setBrokenOff(true);
  asking.join();
  EXPECT_EQ(waiting.failure.value_or(ScriptFailure()).number, keeperProtocol::kConnectionInvalid);
  EXPECT_EQ(host.run(QStringLiteral("a")).failure.value_or(ScriptFailure()).number,
            keeperProtocol::kConnectionInvalid);
  host.setBrokenOff(false);
  engine.letGoOn();
  EXPECT_TRUE(host.run(QStringLiteral("a")).result);
  EXPECT_EQ(engine.ran, 2);
}
