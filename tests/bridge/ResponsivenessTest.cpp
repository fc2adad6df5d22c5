#include "support/RunningApplications.h"
#include "tests/bridge/BridgeFixture.h"

using namespace iTunesInterface;

namespace {
class Responsiveness : public BridgeTest {};
}  // namespace

TEST_F(Responsiveness, AnApplicationThatAnswersLateIsSilentUntilItDoes) {
  const double start = seconds();
  host.answerAfter(9, u"12.9.5.5"_qs);
  EXPECT_FALSE(isiTunesResponsive());
  EXPECT_EQ(seconds() - start, 8.0);
  EXPECT_FALSE(isiTunesResponsive());
  EXPECT_EQ(seconds() - start, 8.0);
  EXPECT_EQ(host.scripts().size(), 1);
  time.run(2);
  host.answer(u"12.9.5.5"_qs);
  EXPECT_TRUE(isiTunesResponsive());
  EXPECT_EQ(host.scripts().size(), 2);
}

TEST_F(Responsiveness, AFailedOrEmptyAnswerIsNoneAndTheNextCallAsksAgain) {
  host.answer(ScriptFailure{-600, u"not running"_qs, 0, 0});
  host.answer(QString());
  host.answer(u"1"_qs);
  EXPECT_FALSE(isiTunesResponsive());
  EXPECT_FALSE(isiTunesResponsive());
  EXPECT_TRUE(isiTunesResponsive());
}

TEST_F(Responsiveness, AResetForgetsTheProbeInFlight) {
  host.answerAfter(30, u"1"_qs);
  EXPECT_FALSE(isiTunesResponsive());
  reset();
  host.answer(u"1"_qs);
  // The second probe waits for its turn behind the first, so it is in flight itself.
  EXPECT_FALSE(isiTunesResponsive());
  EXPECT_EQ(bridgeState().abandoned.running(), 2);
  time.run(40);
  EXPECT_EQ(host.scripts().size(), 2);
}

TEST_F(Responsiveness, TheRunningStateIsAskedForOnceUntilItIsReset) {
  session.listings = 0;
  EXPECT_TRUE(isMusicAppRunning());
  session.running.clear();
  EXPECT_TRUE(isMusicAppRunning());
  EXPECT_EQ(session.listings, 1);
  resetIsMusicAppRunning();
  EXPECT_FALSE(isMusicAppRunning());
  EXPECT_FALSE(isMusicAppRunning());
  EXPECT_EQ(session.listings, 2);
  EXPECT_TRUE(isMusicAppInstalled());
  EXPECT_FALSE(BMUtility::isApplicationRunning(u"Other"_qs));
  setRunning(false);
  EXPECT_TRUE(BMUtility::isApplicationRunning(u"Other"_qs));
  EXPECT_TRUE(BMUtility::isApplicationRunningWithIdentifier(u"org.example.Other"_qs));
}

TEST_F(Responsiveness, TheMajorVersionIsKeptOnceItIsKnown) {
  setRunning(false);
  EXPECT_EQ(iTunesMajorVersion(), -1);
  setRunning(true);
  const struct {
    const char *version;
    int number;
  } cases[] = {{"", 0}, {".5", 0}, {"beta", 0}, {"7", 7}};
  for (const auto &expected : cases) {
    host.answer(QString::fromUtf8(expected.version));
    EXPECT_EQ(iTunesMajorVersion(), expected.number) << expected.version;
  }
  EXPECT_EQ(iTunesMajorVersion(), 7);
  EXPECT_EQ(host.scripts().size(), 4);
  resetBridge();
  host.answer(u"12.9.5.5"_qs);
  EXPECT_EQ(iTunesMajorVersion(), 12);
}
