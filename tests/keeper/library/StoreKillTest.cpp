#include <unistd.h>

#include <QFile>
#include <random>

#include "keeper/library/LibraryExport.h"
#include "keeper/library/LibraryImport.h"
#include "keeper/library/StoreBatch.h"
#include "tests/keeper/library/StoreFixture.h"

namespace {

constexpr int kListLength = 5;

/// What the child tells of after each change: 4 bytes, the number of the change.
void tell(int pipe, quint32 change) {
  if (::write(pipe, &change, sizeof change) != sizeof change) ::_exit(1);
}

/// Each round renames a track, adds one and rewrites a playlist as a whole with one number in all its names.
void changeForEver(const QString &folder, int pipe) {
  LibraryStore store;
  if (!store.open(folder).isEmpty()) ::_exit(2);
  TrackTable &tracks = store.tracks();
  const TrackRow renamed = tracks.at(0);
  const PlaylistRow list = store.playlists().named(QStringLiteral("list")).front();
  for (quint32 round = 0;; ++round) {
    const Dictionary made = Dictionary::make();
    made.set(keys::Name, QString::number(round));
    tracks.set(renamed, {{keys::Name, QString::number(round)}});
    {
      StoreBatch batch(store);
      TrackRows added;
      for (int number = 0; number < kListLength; ++number) added.push_back(tracks.add(made));
      const TrackRows old = store.entries().tracks(list);
      store.entries().replaceAll(list, added);
      tracks.remove(old);
      batch.commit();
    }
    tell(pipe, round);
  }
}

}  // namespace

/// KEEPER_KILLS in the environment asks for more instants.
TEST_F(StoreFixture, AKillAtAnyInstantLosesNoAcknowledgedChangeAndHalvesNone) {
  std::mt19937 random(11);
  add(QStringLiteral("start"));
  const PlaylistRow list = makeList(QStringLiteral("list"));
  store.close();
  const int kills =
      qEnvironmentVariableIsSet("KEEPER_KILLS") ? qEnvironmentVariableIntValue("KEEPER_KILLS") : 20;
  for (int kill = 0; kill < kills; ++kill) {
    const QByteArray told = runAndKill([&](int pipe) { changeForEver(storeFolder(), pipe); },
                                       qsizetype(4 * (1 + random() % 30)), random() % 3000);
    ASSERT_GE(told.size(), 4);
    const qint64 acknowledged = told.size() / 4 - 1;
    reopen();
    ASSERT_EQ(store.integrityReport(), QString());
    const qint64 renamed = nameOf(store.tracks().at(0)).toLongLong();
    ASSERT_GE(renamed, acknowledged);
    ASSERT_LE(renamed, acknowledged + 1);
    const TrackRows listed = store.entries().tracks(list);
    ASSERT_EQ(listed.size(), size_t(kListLength));
    const qint64 round = nameOf(listed[0]).toLongLong();
    ASSERT_GE(round, acknowledged);
    for (const TrackRow row : listed) ASSERT_EQ(nameOf(row).toLongLong(), round);
    ASSERT_EQ(store.tracks().count(), 1 + kListLength);
    ASSERT_EQ(store.entries().count(store.playlists().master()), 1 + kListLength);
    store.close();
  }
}

TEST_F(StoreFixture, AKilledImportOrExportLeavesTheOldStateOrTheNew) {
  StoreBatch batch(store);
  for (int number = 0; number < 3000; ++number) add(QString::number(number));
  batch.commit();
  const QString xml = LibraryExport(store).usualPath();
  ASSERT_EQ(LibraryExport(store).run(), QString());
  const TrackRow first = store.tracks().at(0);
  std::mt19937 random(12);
  for (int kill = 0; kill < 6; ++kill) {
    store.tracks().remove(std::array{store.tracks().at(1)});
    store.close();
    const qsizetype count = 2999;
    runAndKill(
        [&](int pipe) {
          LibraryStore mine;
          if (!mine.open(storeFolder()).isEmpty()) return;
          tell(pipe, 0);
          if (LibraryImport(mine).run(xml).isEmpty()) tell(pipe, 1);
        },
        4, random() % 120000);
    reopen();
    ASSERT_EQ(store.integrityReport(), QString());
    const qsizetype now = store.tracks().count();
    ASSERT_TRUE(now == count || now == 3000) << now;
    ASSERT_EQ(store.entries().count(store.playlists().master()), now);
    if (now == count) {
      ASSERT_EQ(LibraryImport(store).run(xml), QString());
    }
  }
  EXPECT_NE(store.tracks().at(0), first);
  for (int kill = 0; kill < 6; ++kill) {
    store.tracks().set(store.tracks().at(0), {{keys::Year, kill}});
    store.close();
    runAndKill(
        [&](int pipe) {
          LibraryStore mine;
          if (!mine.open(storeFolder()).isEmpty()) return;
          tell(pipe, 0);
          (void)LibraryExport(mine).run();
        },
        4, random() % 40000);
    const Value now = treeOf(xml);
    ASSERT_EQ(now.toDictionary().value(keys::Tracks).toDictionary().size(), 3000);
    reopen();
  }
  ASSERT_EQ(LibraryExport(store).run(), QString());
  // An export that was killed is not taken for another program's file.
  EXPECT_FALSE(
      QFile::exists(storeFolder() + QStringLiteral("/iTunes Music Library (before Music Keeper).xml")));
}
