#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>

#include <QFileInfo>
#include <thread>

#include "platform/keeper/KeeperLock.h"
#include "tests/program/MergedHome.h"

namespace {

constexpr int kLongestSeconds = 120;

/// A merge by the window's program that gets stuck, as the keeper stops answering.
class StalledMerge : public MergedHome {
 protected:
  enum class Moment { FirstSteps, BehindRows };

  /// Stops the keeper at an instant behind that moment of a merge, and waits until the merge counts as stuck.
  void stopKeeper(Moment moment) {
    waitForFirstSteps();
    const auto hasRows = [this] {
      const std::optional<keeperProtocol::Status> now = status();
      return now && now->tracks + 2 <= before.tracks;
    };
    ASSERT_TRUE(moment != Moment::BehindRows || eventually(hasRows));
    std::this_thread::sleep_for(std::chrono::milliseconds(random() % 40));
    keeper = pid_t(KeeperLock::holder(place.lock()).value_or(0));
    ASSERT_GT(keeper, 0);
    ASSERT_EQ(::kill(keeper, SIGSTOP), 0);
    const auto isStuck = [this] { return QFileInfo::exists(statePath()); };
    ASSERT_TRUE(eventually(isStuck, kLongestSeconds)) << toldText();
  }

  /// The window's program is opened again, and ends.
  void waitForNewProcess() {
    const auto isOpened = [this] { return windowTold().count(QStringLiteral("launch")) == 2; };
    ASSERT_TRUE(eventually(isOpened, kLongestSeconds)) << toldText();
    const auto hasEnded = [this] { return processesOf(MERGING_APPLICATION).empty(); };
    ASSERT_TRUE(eventually(hasEnded, kLongestSeconds)) << toldText();
  }
  std::string toldText() const { return windowTold().join(u'\n').toStdString(); }

  /// Writes a state file that was written so many seconds ago.
  void putState(const QByteArray &bytes, int age) {
    writeFile(statePath(), bytes);
    ASSERT_EQ(::chmod(qPrintable(statePath()), 0600), 0);
    const timespec then = {::time(nullptr) - age, 0};
    const timespec times[] = {then, then};
    ASSERT_EQ(::utimensat(AT_FDCWD, qPrintable(statePath()), times, 0), 0);
  }

  const quint32 seed =
      quint32(qEnvironmentVariableIsSet("MERGE_SEED") ? qEnvironmentVariableIntValue("MERGE_SEED")
                                                      : std::random_device()() >> 1);
  std::mt19937 random{seed};
  pid_t keeper = 0;
};

}  // namespace

TEST_F(StalledMerge, GoesOnInANewProcessWithoutAQuestionOrAScan) {
  SCOPED_TRACE("MERGE_SEED=" + std::to_string(seed));
  const struct {
    const char *what;
    Moment moment;
    int signal, policy;
  } cases[] = {{"hardly begun, the keeper goes on", Moment::FirstSteps, SIGCONT, 1},
               {"with rows done, the keeper is killed", Moment::BehindRows, SIGKILL, 0}};
  for (const auto &one : cases) {
    SCOPED_TRACE(one.what);
    makeHome(90, random);
    startWindow(one.policy);
    stopKeeper(one.moment);
    if (HasFatalFailure()) return;
    ASSERT_EQ(::kill(keeper, one.signal), 0);
    EXPECT_EQ(waitForMerge(), 0) << told.toStdString();
    waitForNewProcess();
    if (HasFatalFailure()) return;
    const QStringList lines = windowTold();
    EXPECT_EQ(lines.count(QStringLiteral("scan")), 1) << toldText();
    EXPECT_EQ(lines.filter(QStringLiteral("alert")), QStringList()) << toldText();
    EXPECT_FALSE(QFileInfo::exists(statePath()));
    ensureKeeper();
    const Holdings now = holdings();
    const QString end = QStringLiteral("end tracks %1 plays %2 files %3");
    EXPECT_EQ(lines.last(), end.arg(now.tracks).arg(now.plays).arg(now.tracksWithFile)) << toldText();
    // One that hung before its first row does without what may have hung, and leaves what needs it.
    const QStringList failures = lines.filter(QStringLiteral("failure"));
    EXPECT_TRUE(one.moment != Moment::BehindRows || failures.isEmpty()) << toldText();
    if (!failures.isEmpty()) mergeToTheEnd(one.policy);
    expectNothingLost();
  }
}

TEST_F(StalledMerge, WaitsForAStartByHandIfTheKeeperStaysFrozen) {
  SCOPED_TRACE("MERGE_SEED=" + std::to_string(seed));
  makeHome(60, random);
  startWindow(0);
  stopKeeper(Moment::BehindRows);
  if (HasFatalFailure()) return;
  EXPECT_EQ(waitForMerge(), 0) << told.toStdString();
  waitForNewProcess();
  if (HasFatalFailure()) return;
  EXPECT_EQ(windowTold().last(), QStringLiteral("alert iTunesUnresponsiveTitle")) << toldText();
  ASSERT_EQ(::kill(keeper, SIGCONT), 0);
  startWindow(0);
  EXPECT_EQ(waitForMerge(), 0) << told.toStdString();
  EXPECT_EQ(windowTold().count(QStringLiteral("scan")), 1) << toldText();
  EXPECT_EQ(windowTold().filter(QStringLiteral("failure")), QStringList());
  ensureKeeper();
  expectNothingLost();
}

TEST_F(StalledMerge, EndsWithAnAlertIfNothingCanOpenItAgain) {
  SCOPED_TRACE("MERGE_SEED=" + std::to_string(seed));
  makeHome(60, random);
  startWindow(0, {path(QStringLiteral("home/no such tool"))});
  stopKeeper(Moment::BehindRows);
  if (HasFatalFailure()) return;
  EXPECT_EQ(waitForMerge(), EXIT_FAILURE);
  EXPECT_EQ(windowTold().last(), QStringLiteral("alert MergeTimeoutTitle")) << toldText();
  ASSERT_EQ(::kill(keeper, SIGCONT), 0);
  expectSongsStand();
  const QByteArray state = readFile(statePath());
  ASSERT_FALSE(state.isEmpty());

  mergeToTheEnd(0);
  expectNothingLost();
  EXPECT_TRUE(QFileInfo::exists(statePath())) << "the terminal's program took what is the window's";

  // What the state says is long done.
  putState(state, 1);
  startWindow(0);
  EXPECT_EQ(waitForMerge(), 0);
  EXPECT_EQ(windowTold().count(QStringLiteral("scan")), 1) << toldText();
  expectNothingLost();

  const struct {
    const char *what;
    QByteArray bytes;
    int age;
  } unusable[] = {
      {"old", state, 300}, {"torn", state.left(state.size() / 2), 1}, {"of the future", state, -3600}};
  for (const auto &one : unusable) {
    SCOPED_TRACE(one.what);
    makeHome(20, random);
    putState(one.bytes, one.age);
    startWindow(0);
    EXPECT_EQ(waitForMerge(), 0);
    EXPECT_EQ(windowTold().count(QStringLiteral("scan")), 1) << toldText();
    EXPECT_EQ(windowTold().filter(QStringLiteral("failure")), QStringList());
    EXPECT_FALSE(QFileInfo::exists(statePath()));
    expectNothingLost();
  }
}
