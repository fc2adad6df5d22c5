#include <signal.h>
#include <sys/wait.h>

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <thread>

#include "keeper/library/LibraryStore.h"
#include "keeper/library/PlaylistTable.h"
#include "keeper/library/StoreBatch.h"
#include "platform/keeper/KeeperLock.h"
#include "platform/keeper/KeeperWorkspace.h"
#include "platform/qt/QtWorkspace.h"
#include "tests/keeper/server/KeeperProcess.h"

namespace {

TEST_F(KeeperProcess, AnswersItsVersionAndQuitsWhenAsked) {
  start();
  EXPECT_EQ(tell(QStringLiteral("version")), status()->version);
  EXPECT_EQ(status()->processID, process.processId());
  EXPECT_EQ(status()->folder, libraryFolder());
  EXPECT_EQ(quit(), 0);
  EXPECT_FALSE(KeeperLock::holder(place.lock()));
  EXPECT_FALSE(QFileInfo::exists(place.socket()));
  EXPECT_EQ(tell(QStringLiteral("version")), QStringLiteral("error -600"));
}

TEST_F(KeeperProcess, AChangeIsThereAgainAfterAQuit) {
  start();
  tell(QStringLiteral("make new user playlist with properties {name:\"Kept\"}"));
  EXPECT_EQ(quit(), 0);
  QFile store(storePath());
  const QDateTime now = QDateTime::currentDateTime();
  ASSERT_TRUE(store.open(QIODevice::ReadWrite) &&
              store.setFileTime(now.addDays(-9), QFile::FileModificationTime));
  start();
  EXPECT_EQ(tell(QStringLiteral("count (every user playlist whose name is \"Kept\")")), QStringLiteral("1"));
  EXPECT_GT(QFileInfo(storePath()).lastModified(), now.addDays(-1)) << "a library that is served is in use";
}

TEST_F(KeeperProcess, ASaveIsAnsweredBeforeItsFileIsWritten) {
  start();
  tell(QStringLiteral("make new user playlist with properties {name:\"Kept\"}"));
  LibraryStore store;
  ASSERT_EQ(store.open(libraryFolder()), QString());
  {
    // While another writes no export can end.
    StoreBatch batch(store);
    EXPECT_EQ(tell(QStringLiteral("save")), QString());
    EXPECT_EQ(tell(QStringLiteral("save")), QString());
    EXPECT_FALSE(QFileInfo::exists(exportPath()));
  }
  EXPECT_TRUE(eventually([this] { return readFile(exportPath()).contains("Kept"); }));
}

TEST_F(KeeperProcess, ASecondOneLeavesTheFirstAlone) {
  start();
  EXPECT_EQ(runToEnd({}), 3);
  EXPECT_NE(said.find("runs already (process " + std::to_string(process.processId())), std::string::npos)
      << said;
  EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1) << said;
  EXPECT_EQ(runToEnd({QStringLiteral("--once")}), 3) << "nor is the library touched behind its back";
  EXPECT_TRUE(status());
}

TEST_F(KeeperProcess, WrongUseIsToldWithoutALibraryBeingMade) {
  for (const char *arguments : {"--nothing", "--folder", "--map a=b", "--import x --map a", "--once=1"})
    EXPECT_EQ(runToEnd(QString::fromLatin1(arguments).split(u' ')), 2) << arguments;
  EXPECT_EQ(runToEnd({QStringLiteral("--help")}), 0);
  EXPECT_FALSE(QFileInfo::exists(libraryFolder()));
}

TEST_F(KeeperProcess, AStoppedOneKeepsItsCallersWaitingAndGoesOn) {
  start();
  ::kill(pid_t(process.processId()), SIGSTOP);
  siginfo_t stopped = {};
  ASSERT_EQ(::waitid(P_PID, id_t(process.processId()), &stopped, WSTOPPED | WNOWAIT), 0);
  EXPECT_FALSE(status(200));
  EXPECT_TRUE(KeeperLock::holder(place.lock())) << "it still runs";
  QString answer;
  std::thread asking([&] { answer = tell(QStringLiteral("version")); });
  EXPECT_FALSE(status(200));
  ::kill(pid_t(process.processId()), SIGCONT);
  asking.join();
  EXPECT_EQ(answer, status()->version);
}

TEST_F(KeeperProcess, ASignalEndsItBehindTheScriptThatRunsASecondOneDoesNotWait) {
  for (const bool isImpatient : {false, true}) {
    start();
    const int lists = tell(QStringLiteral("count playlists")).toInt();
    ASSERT_GT(lists, 0);
    QString answer;
    std::thread asking([&] {
      answer = run(QStringLiteral("tell application \"Music Keeper\" to make new user playlist\ndelay %1\n"
                                  "return \"done\"")
                       .arg(isImpatient ? 600.0 : 0.5));
    });
    const auto hasBegun = [&] {
      LibraryStore store;
      return store.open(libraryFolder(), LibraryStore::Access::ReadOnly).isEmpty() &&
             store.playlists().count() > lists;
    };
    EXPECT_TRUE(eventually(hasBegun));
    ::kill(pid_t(process.processId()), SIGTERM);
    EXPECT_TRUE(eventually([this] { return !QFileInfo::exists(place.socket()); }));
    if (isImpatient) ::kill(pid_t(process.processId()), SIGTERM);
    EXPECT_EQ(waitForEnd(), 0);
    asking.join();
    EXPECT_EQ(answer, isImpatient ? QStringLiteral("error -128") : QStringLiteral("done"));
  }
}

TEST_F(KeeperProcess, AKillInsideAScriptReadsAsABrokenConnection) {
  start();
  QString answer;
  std::thread asking([&] { answer = run(QStringLiteral("delay 60")); });
  EXPECT_TRUE(eventually([this] { return status().has_value(); }));
  killNow();
  asking.join();
  EXPECT_TRUE(answer == u"error -609" || answer == u"error -600") << answer.toStdString();
}

TEST_F(KeeperProcess, AScriptStartsOneThatDoesNotRun) {
  KeeperScriptHost launching(place, KeeperLauncher(QStringLiteral(TALLYFEN_KEEPER)));
  std::vector<std::thread> threads;
  std::atomic<int> answered = 0;
  for (int i = 0; i < 3; ++i) {
    threads.emplace_back([&] {
      if (launching.run(QStringLiteral("tell application \"Music Keeper\" to version")).result) ++answered;
    });
  }
  for (std::thread &thread : threads) thread.join();
  EXPECT_EQ(answered, 3) << "one is enough for all who ask at once";
  EXPECT_EQ(tell(QStringLiteral("quit")), QString());
  EXPECT_TRUE(eventually([this] { return !KeeperLock::holder(place.lock()); }));
}

TEST_F(KeeperProcess, OneThatCannotServeIsNotWaitedForForEver) {
  writeFile(storePath(), QByteArray(8192, 'x'));
  KeeperScriptHost launching(place, KeeperLauncher(QStringLiteral(TALLYFEN_KEEPER)));
  const ScriptOutcome outcome = launching.run(QStringLiteral("return 1"));
  ASSERT_TRUE(outcome.failure);
  EXPECT_TRUE(QList<qint64>({-10810, -609, -10000}).contains(*outcome.failure->number))
      << *outcome.failure->number;
  EXPECT_EQ(readFile(storePath()), QByteArray(8192, 'x'));
  // Beside one that is still ending, the next would be a second one.
  ASSERT_TRUE(eventually([this] { return !KeeperLock::holder(place.lock()); }));
  EXPECT_EQ(runToEnd({}), 1);
  EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1) << said;
  EXPECT_EQ(KeeperScriptHost(place, KeeperLauncher(path(QStringLiteral("nothing")))).run({}).failure->number,
            -600);
}

TEST_F(KeeperProcess, AFolderThatCannotBeMadeIsNamed) {
  writeFile(path(QStringLiteral("file")), "x");
  EXPECT_EQ(runToEnd({QStringLiteral("--folder"), path(QStringLiteral("file/library"))}), 1);
  EXPECT_NE(said.find("file/library"), std::string::npos) << said;
}

TEST_F(KeeperProcess, LaunchesAndEndsAreToldOnce) {
  QtWorkspace desktop;
  const KeeperLauncher launcher{QStringLiteral(TALLYFEN_KEEPER)};
  KeeperWorkspace workspace(&desktop, place, &launcher);
  QStringList told;
  const auto subscription = workspace.observeApplications(
      [&](const RunningApplication &one) { told += u'+' + one.bundleIdentifier; },
      [&](const RunningApplication &one) { told += u'-' + one.bundleIdentifier; });
  EXPECT_TRUE(workspace.runningApplications().empty());
  start();
  EXPECT_TRUE(eventually([&] { return told.size() == 1; }));
  EXPECT_EQ(workspace.runningApplications().size(), 1u);
  EXPECT_TRUE(workspace.launchApplication(KeeperWorkspace::keeper().bundleIdentifier));
  tell(QStringLiteral("version"));
  killNow();
  EXPECT_TRUE(eventually([&] { return told.size() == 2; }));
  start();
  EXPECT_TRUE(eventually([&] { return told.size() == 3; }));
  EXPECT_EQ(quit(), 0);
  EXPECT_TRUE(eventually([&] { return told.size() == 4; }));
  EXPECT_EQ(told.join(u' '), QStringLiteral("+com.brinmoor.keeper -com.brinmoor.keeper +com.brinmoor.keeper "
                                            "-com.brinmoor.keeper"));
  workspace.stopObserving(subscription);
}

TEST_F(KeeperProcess, TheFirstStartTakesInTheNewestLibraryAndLeavesItsFileAlone) {
  const QString file = exportPath();
  writeFile(file, libraryXml(300));
  start();
  EXPECT_TRUE(eventually([this] { return status()->tracks == 300; }));
  EXPECT_FALSE(status()->importing);
  EXPECT_EQ(tell(QStringLiteral("count tracks of user playlist \"P\"")), QStringLiteral("300"));
  EXPECT_EQ(tell(QStringLiteral("save")), QString());
  EXPECT_EQ(quit(), 0);
  EXPECT_EQ(readFile(file), libraryXml(300)) << "nothing has changed";
  start();
  EXPECT_TRUE(eventually([this] { return status()->tracks == 300; }));
  tell(QStringLiteral("set name of (first track whose name is \"Name 7\") to \"Changed\""));
  EXPECT_EQ(quit(), 0);
  EXPECT_TRUE(readFile(file).contains("<string>Changed</string>"));
  EXPECT_EQ(readFile(libraryFolder() + QStringLiteral("/iTunes Music Library (before Music Keeper).xml")),
            libraryXml(300));
}

TEST_F(KeeperProcess, AFirstImportThatWasKilledBeginsAgain) {
  writeFile(path(QStringLiteral("home/Documents/iTunes/iTunes Library.xml")), libraryXml(20000));
  start();
  EXPECT_EQ(tell(QStringLiteral("return (count tracks of library playlist 1) mod 20000")),
            QStringLiteral("0"));
  killNow();
  start();
  EXPECT_TRUE(eventually([this] { return status()->tracks == 20000; }));
  EXPECT_EQ(tell(QStringLiteral("count tracks of library playlist 1")), QStringLiteral("20000"));
}

TEST_F(KeeperProcess, AFirstImportThatFailsIsToldAndBeginsAgainAtTheNextStart) {
  const QString file = path(QStringLiteral("home/Documents/iTunes/iTunes Library.xml"));
  writeFile(file, "<?xml version=\"1.0\"?>\n<plist version=\"1.0\"><dict><key>Tr");
  start();
  EXPECT_TRUE(eventually([this] { return !status()->importProblem.isEmpty(); }));
  EXPECT_FALSE(status()->importing);
  EXPECT_EQ(tell(QStringLiteral("count tracks of library playlist 1")), QStringLiteral("0"));
  EXPECT_EQ(quit(), 0);
  writeFile(file, libraryXml(3));
  start();
  EXPECT_TRUE(eventually([this] { return status()->tracks == 3; }));
  EXPECT_EQ(status()->importProblem, QString());
}

TEST_F(KeeperProcess, ALibraryGoesInAndOutWithoutServing) {
  const QString in = path(QStringLiteral("in.xml")), out = path(QStringLiteral("out.xml"));
  writeFile(in, libraryXml(50));
  const QStringList both{QStringLiteral("--import"), in, QStringLiteral("--export"), out,
                         QStringLiteral("--once")};
  EXPECT_EQ(runToEnd(both), 0);
  EXPECT_NE(said.find("50 tracks"), std::string::npos) << said;
  EXPECT_EQ(readFile(out).count("<string>Artist</string>"), 50);
  EXPECT_EQ(
      runToEnd({QStringLiteral("--import"), path(QStringLiteral("gone.xml")), QStringLiteral("--once")}), 1);
  EXPECT_NE(said.find("gone.xml"), std::string::npos) << said;
  start();
  EXPECT_TRUE(eventually([this] { return status()->tracks == 50; })) << "a failed import has cost nothing";
}

}  // namespace
