#include <signal.h>

#include <random>
#include <thread>

#include "keeper/library/EntryTable.h"
#include "keeper/library/LibraryStore.h"
#include "keeper/library/PlaylistTable.h"
#include "keeper/library/TrackTable.h"
#include "tests/keeper/server/KeeperProcess.h"
#include "values/Keys.h"

namespace {

constexpr int kListed = 5;

/// KEEPER_KILLS in the environment asks for more instants.
int killsOr(int usual) {
  return qEnvironmentVariableIsSet("KEEPER_KILLS") ? qEnvironmentVariableIntValue("KEEPER_KILLS") : usual;
}

QString textOfID(int number) {
  return QString::number(number).rightJustified(16, u'0');
}

/// The real program under a stream of rounds, each of four changes: the first track's new name, the list "L"
/// emptied, filled anew, a track deleted.
class KilledKeeper : public KeeperProcess {
 protected:
  QString scriptOf(int round) const {
    return QStringLiteral(
               "tell application \"Music Keeper\"\n"
               "set name of (first track of library playlist 1 whose persistent ID is \"%1\") to \"%2\"\n"
               "set listed to (count of tracks of user playlist \"L\")\n"
               "if listed > 0 then delete (tracks 1 thru listed of user playlist \"L\")\n"
               "duplicate (get tracks %3 thru %4 of library playlist 1) to user playlist \"L\"\n"
               "delete (first track of library playlist 1 whose persistent ID is \"%5\")\n"
               "end tell\nreturn \"done\"")
        .arg(textOfID(1))
        .arg(round)
        .arg(firstListed(round))
        .arg(firstListed(round) + kListed - 1)
        .arg(textOfID(deletedBy(round)));
  }
  static int firstListed(int round) { return 2 + round % 50; }
  static int deletedBy(int round) { return 60 + round; }

  /// Has the changes made from a round on, until the keeper is gone; the last acknowledged round.
  int changeAndKill(int firstRound) {
    std::atomic<int> acknowledged = firstRound - 1;
    QString refusal;
    std::thread changing([&] {
      while ((refusal = run(scriptOf(acknowledged + 1))) == u"done") ++acknowledged;
    });
    const int enough = firstRound + int(random() % 6);
    EXPECT_TRUE(eventually([&] { return acknowledged >= enough; })) << refusal.toStdString();
    std::this_thread::sleep_for(std::chrono::microseconds(random() % 8000));
    ::kill(pid_t(process.processId()), SIGKILL);
    EXPECT_EQ(waitForEnd(), -1);
    changing.join();
    return acknowledged;
  }

  /// Whether the library holds all that was acknowledged and the changes of the next round, in order, up to
  /// one of them.
  void expectWhole(int acknowledged) {
    LibraryStore store;
    ASSERT_EQ(store.open(libraryFolder(), LibraryStore::Access::ReadOnly), QString());
    ASSERT_EQ(store.integrityReport(), QString());
    TrackTable &tracks = store.tracks();
    const auto track = [&](int number) {
      return tracks.withPersistentID(textOfID(number).toULongLong(nullptr, 16));
    };
    const auto listOf = [&](int round) {
      TrackRows rows;
      for (int i = 0; i < kListed; ++i) rows.push_back(track(firstListed(round) + i));
      return rows;
    };
    const int next = acknowledged + 1;
    const int name = tracks.value(track(1), keys::Name).toText().toInt();
    const PlaylistRow list = store.playlists().named(QStringLiteral("L")).front();
    const TrackRows listed = store.entries().tracks(list);
    const bool isRenamed = name == next, isEmpty = listed.empty(), isFilled = listed == listOf(next);
    const bool isDeleted = !tracks.exists(track(deletedBy(next)));
    ASSERT_TRUE(isRenamed || name == acknowledged) << name << ' ' << acknowledged;
    ASSERT_TRUE(isEmpty || isFilled || listed == listOf(acknowledged)) << listed.size();
    ASSERT_TRUE(isRenamed || !(isEmpty || isFilled)) << "changes follow each other";
    ASSERT_TRUE(isFilled || !isDeleted);
    ASSERT_FALSE(tracks.exists(track(deletedBy(acknowledged))));
    undeleted += isDeleted ? 0 : 1;
    // The next life begins behind the round that was broken off.
    const qsizetype left = total - (next - undeleted);
    ASSERT_EQ(tracks.count(), left);
    for (const PlaylistRow all :
         {store.playlists().master(), store.playlists().named(QStringLiteral("P")).front()})
      ASSERT_EQ(store.entries().count(all), left);
  }

  std::mt19937 random{std::random_device()()};
  int total = 0, undeleted = 0;
};

}  // namespace

TEST_F(KilledKeeper, LosesNothingThatWasAcknowledgedAndHalvesNoChange) {
  const int kills = killsOr(6);
  total = 100 + 40 * kills;
  writeFile(path(QStringLiteral("home/Documents/iTunes/iTunes Library.xml")), libraryXml(total));
  start();
  ASSERT_TRUE(eventually([this] { return status()->tracks == total; }));
  ASSERT_EQ(tell(QStringLiteral("make new user playlist with properties {name:\"L\"}\nreturn 1")),
            QStringLiteral("1"));
  int acknowledged = 0;
  for (int kill = 0; kill < kills && !HasFatalFailure(); ++kill) {
    acknowledged = changeAndKill(acknowledged + (kill == 0 ? 1 : 2));
    start();
    expectWhole(acknowledged);
  }
}

TEST_F(KilledKeeper, LeavesTheOldLibraryOrTheNewOneWhenItImportsAndTheOldFileOrTheNewWhenItExports) {
  const QString files[] = {path(QStringLiteral("a.xml")), path(QStringLiteral("b.xml"))},
                out = path(QStringLiteral("out.xml"));
  const int counts[] = {700, 900};
  for (const int i : {0, 1}) writeFile(files[i], libraryXml(counts[i]));
  const auto arguments = [&](int i) {
    return QStringList{QStringLiteral("--once"), QStringLiteral("--import"), files[i],
                       QStringLiteral("--export"), out};
  };
  ASSERT_EQ(runToEnd(arguments(0)), 0);
  int before = 0;
  for (int kill = 0; kill < killsOr(6) && !HasFatalFailure(); ++kill) {
    const int to = 1 - before;
    process.start(QStringLiteral(TALLYFEN_KEEPER), arguments(to));
    ASSERT_TRUE(process.waitForStarted());
    std::this_thread::sleep_for(std::chrono::microseconds(random() % 150000));
    process.kill();
    (void)waitForEnd();
    LibraryStore store;
    ASSERT_EQ(store.open(libraryFolder(), LibraryStore::Access::ReadOnly), QString());
    ASSERT_EQ(store.integrityReport(), QString());
    const qsizetype now = store.tracks().count();
    ASSERT_TRUE(now == counts[before] || now == counts[to]) << now;
    ASSERT_EQ(store.entries().count(store.playlists().named(QStringLiteral("P")).front()), now);
    const QByteArray xml = readFile(out);
    const qsizetype exported = xml.count("<key>Name</key><string>Name ");
    ASSERT_TRUE(xml.endsWith("</plist>\n") && (exported == counts[0] || exported == counts[1])) << exported;
    if (now == counts[to]) before = to;
  }
  ASSERT_EQ(runToEnd(arguments(before)), 0);
  EXPECT_FALSE(QFile::exists(path(QStringLiteral("out (before Music Keeper).xml"))))
      << "an export that was killed is no other program's file";
}
