#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <QFile>
#include <QFileInfo>
#include <csignal>
#include <thread>

#include "keeper/library/StoreBatch.h"
#include "keeper/library/StoreUpgrade.h"
#include "platform/keeper/StoreSchema.h"
#include "tests/keeper/library/StoreFixture.h"
#include "values/PersistentID.h"

using namespace storeSchema;

TEST_F(StoreFixture, WhatWasChangedIsThereAfterOpeningAgain) {
  const TrackRow a = add(QStringLiteral("a"));
  const TrackRow b = add(QStringLiteral("b"));
  const quint64 id = store.tracks().persistentID(a);
  store.tracks().set(a, {{keys::Name, QStringLiteral("A")}, {keys::Year, 1999}, {keys::PersistentID, 5}});
  const PlaylistRow list = makeList(QStringLiteral("l"));
  store.entries().append(list, std::array{b, a, b});
  const PlaylistInfo before = *store.playlists().info(list);
  store.setRoot({{keys::Features, 9}});
  store.setNote(QStringLiteral("n"), 3);
  const qint64 stamp = store.changeStamp();
  reopen();
  EXPECT_EQ(store.tracks().withPersistentID(id), a);
  EXPECT_EQ(store.tracks().value(a, keys::Year).toInteger(), 1999);
  EXPECT_EQ(store.tracks().value(a, keys::PersistentID).toText(), hexPersistentID(id));
  EXPECT_EQ(namesIn(list), QStringLiteral("b A b"));
  EXPECT_EQ(namesIn(store.playlists().master()), QStringLiteral("A b"));
  EXPECT_EQ(store.playlists().info(list)->persistentID, before.persistentID);
  EXPECT_EQ(store.root().value(keys::Features).toInteger(), 9);
  EXPECT_EQ(store.note(QStringLiteral("n")).toInteger(), 3);
  EXPECT_EQ(store.changeStamp(), stamp);
  EXPECT_EQ(store.integrityReport(), QString());
}

TEST_F(StoreFixture, TracksAreFoundByWhatTheyAreSearchedFor) {
  const TrackRow first = add(QStringLiteral("Stra\u00dfe"));
  const TrackRow second = add(QStringLiteral("\u00c9toile"));
  TrackTable &tracks = store.tracks();
  tracks.set(second, {{keys::Artist, QStringLiteral("Who")},
                      {keys::Location, QStringLiteral("file:///m/%C3%A9%20a.mp3")},
                      {keys::Compilation, true}});
  EXPECT_EQ(tracks.named(QStringLiteral("\u00e9TOILE")), TrackRows{second});
  EXPECT_EQ(tracks.named(QStringLiteral("\u00e9toile"), QStringLiteral("wHO")), TrackRows{second});
  EXPECT_EQ(tracks.named(QStringLiteral("stra\u00dfe"), QString()), TrackRows{first});
  EXPECT_EQ(tracks.byArtist(QStringLiteral("WHO")), TrackRows{second});
  EXPECT_EQ(tracks.byArtist(QString()), TrackRows{first});
  EXPECT_EQ(tracks.atPath(QStringLiteral("/m/\u00e9 a.mp3")), TrackRows{second});
  EXPECT_EQ(tracks.withFlags(kHasFile | kCompilation, kHasFile | kCompilation), TrackRows{second});
  EXPECT_EQ(tracks.withFlags(kCompilation, 0), TrackRows{first});
  EXPECT_EQ(tracks.withDatabaseID(tracks.databaseID(first)), first);
  EXPECT_EQ(tracks.at(1), second);
  EXPECT_EQ(tracks.at(2), TrackRow::None);
  tracks.set(second, {{keys::Name, QStringLiteral("x")}, {keys::Location, Value()}});
  EXPECT_TRUE(tracks.named(QStringLiteral("\u00e9toile")).empty());
  EXPECT_TRUE(tracks.atPath(QStringLiteral("/m/\u00e9 a.mp3")).empty());
}

TEST_F(StoreFixture, ARemovedTrackLeavesEveryPlaylistAndItsNumbersAreNotGivenAgain) {
  const TrackRow a = add(QStringLiteral("a"));
  const TrackRow b = add(QStringLiteral("b"));
  const qint64 number = store.tracks().databaseID(b);
  const PlaylistRow list = makeList(QStringLiteral("l"));
  store.entries().append(list, std::array{b, a, b});
  EXPECT_EQ(store.entries().count(list), 3);
  store.tracks().remove(std::array{b});
  EXPECT_EQ(namesIn(list), QStringLiteral("a"));
  EXPECT_EQ(store.entries().count(list), 1);
  EXPECT_FALSE(store.tracks().exists(b));
  EXPECT_TRUE(store.tracks().record(b).isNull());
  EXPECT_FALSE(store.tracks().set(b, {{keys::Name, 1}}));
  EXPECT_THROW(store.entries().append(list, std::array{a, b}), StoreError);
  EXPECT_EQ(namesIn(list), QStringLiteral("a"));
  const TrackRow c = add(QStringLiteral("c"));
  EXPECT_GT(c, b);
  EXPECT_GT(store.tracks().databaseID(c), number);
  reopen();
  EXPECT_EQ(namesIn(list), QStringLiteral("a"));
  EXPECT_EQ(namesIn(store.playlists().master()), QStringLiteral("a c"));
}

TEST_F(StoreFixture, EntriesKeepTheirPlacesWhenOthersGo) {
  const std::array tracks{add(QStringLiteral("a")), add(QStringLiteral("b")), add(QStringLiteral("c"))};
  const PlaylistRow list = makeList(QStringLiteral("l"));
  EntryTable &entries = store.entries();
  const std::vector<PlaylistEntry> made = entries.append(list, tracks);
  entries.remove(list, std::array{made[1].position, qint64(999)});
  EXPECT_EQ(entries.indexOf(list, made[2].position), 1);
  EXPECT_EQ(entries.indexOf(list, made[1].position), std::nullopt);
  entries.append(list, std::array{tracks[0]});
  EXPECT_EQ(entries.ofTrack(list, tracks[0]).size(), 2u);
  EXPECT_EQ(entries.at(list, 2).track, tracks[0]);
  EXPECT_EQ(entries.at(list, 3).track, TrackRow::None);
  reopen();
  EXPECT_EQ(namesIn(list), QStringLiteral("a c a"));
  entries.replaceAll(list, std::array{tracks[2], tracks[2], tracks[1]});
  EXPECT_EQ(entries.indexOf(list, made[2].position), std::nullopt);
  EXPECT_EQ(namesIn(list), QStringLiteral("c c b"));
  EXPECT_FALSE(entries.contains(list, tracks[0]));
  reopen();
  EXPECT_EQ(namesIn(list), QStringLiteral("c c b"));
}

TEST_F(StoreFixture, AFolderGoesWithAllThatLiesInItAndNeverIntoItself) {
  PlaylistTable &playlists = store.playlists();
  const Dictionary folderKeys = named(QStringLiteral("outer"));
  folderKeys.set(keys::Folder, true);
  const PlaylistRow outer = playlists.make(folderKeys);
  const PlaylistRow inner = playlists.make(folderKeys, outer);
  const PlaylistRow list = makeList(QStringLiteral("List"));
  EXPECT_TRUE(playlists.moveTo(list, inner));
  EXPECT_FALSE(playlists.moveTo(outer, inner));
  EXPECT_FALSE(playlists.moveTo(outer, outer));
  EXPECT_FALSE(playlists.moveTo(inner, list));
  EXPECT_EQ(playlists.children(inner), PlaylistRows{list});
  EXPECT_EQ(playlists.named(QStringLiteral("LIST")), PlaylistRows{list});
  playlists.set(list, {{keys::Name, QStringLiteral("new")}, {keys::Folder, Value()}});
  reopen();
  EXPECT_EQ(playlists.info(list)->parent, inner);
  EXPECT_EQ(playlists.info(list)->name, QStringLiteral("new"));
  const PlaylistRow master = playlists.master();
  playlists.remove(std::array{outer, master, PlaylistRow::None});
  EXPECT_EQ(playlists.count(), 1);
  EXPECT_TRUE(playlists.exists(master));
}

TEST_F(StoreFixture, ABatchThatIsNotCommittedLeavesNothing) {
  const TrackRow a = add(QStringLiteral("a"));
  const PlaylistRow list = makeList(QStringLiteral("l"));
  const qint64 stamp = store.changeStamp();
  {
    StoreBatch batch(store);
    store.tracks().set(a, {{keys::Name, QStringLiteral("z")}, {Key(u"a key of this batch"), 1}});
    store.entries().append(list, std::array{a});
    store.tracks().remove(std::array{add(QStringLiteral("b"))});
    store.playlists().remove(std::array{list});
  }
  EXPECT_EQ(nameOf(a), QStringLiteral("a"));
  EXPECT_EQ(store.tracks().count(), 1);
  EXPECT_EQ(namesIn(list), QString());
  EXPECT_EQ(store.changeStamp(), stamp);
  store.tracks().set(a, {{Key(u"a key of this batch"), 2}});
  reopen();
  EXPECT_EQ(store.tracks().value(a, Key(u"a key of this batch")).toInteger(), 2);
}

TEST_F(StoreFixture, AnotherConnectionSeesChangesAndTheFilesDateMoves) {
  LibraryStore reader;
  ASSERT_EQ(reader.open(storeFolder(), LibraryStore::Access::ReadOnly), QString());
  EXPECT_EQ(reader.tracks().count(), 0);
  const timespec old[2] = {{1000, 0}, {1000, 0}};
  const QByteArray path = QFile::encodeName(store.path());
  ASSERT_EQ(::utimensat(AT_FDCWD, path.constData(), old, 0), 0);
  const TrackRow a = add(QStringLiteral("a"));
  EXPECT_GT(QFileInfo(store.path()).lastModified().toSecsSinceEpoch(), 1000000);
  EXPECT_TRUE(reader.refresh());
  EXPECT_FALSE(reader.refresh());
  EXPECT_EQ(reader.tracks().count(), 1);
  EXPECT_EQ(reader.changeStamp(), store.changeStamp());
  EXPECT_THROW(reader.tracks().set(a, {{keys::Name, 1}}), StoreError);
}

TEST_F(StoreFixture, WhatIsNoStoreIsRefusedInOneLineAndStaysAsItIs) {
  const QString place = folder(QStringLiteral("other"));
  const QString file = place + u'/' + kFileName;
  LibraryStore other;
  EXPECT_TRUE(other.open(place, LibraryStore::Access::ReadOnly).startsWith(QStringLiteral("there is no")));
  writeFile(file, "This is not a database, but long enough to be looked at for one.");
  EXPECT_TRUE(other.open(place).contains(QStringLiteral("no library of Music Keeper")));
  EXPECT_TRUE(readFile(file).startsWith("This is not"));
  EXPECT_TRUE(other.open(file + QStringLiteral("/below")).startsWith(QStringLiteral("cannot make")));
  EXPECT_TRUE(other.open(QStringLiteral("/proc")).startsWith(QStringLiteral("cannot open")));
  EXPECT_FALSE(other.isOpen());

  store.database().execute(QStringLiteral("PRAGMA user_version = 99"));
  EXPECT_TRUE(other.open(storeFolder()).contains(QStringLiteral("newer")));
  store.database().execute(QStringLiteral("PRAGMA application_id = 7"));
  EXPECT_TRUE(other.open(storeFolder()).contains(QStringLiteral("another program")));
}

TEST_F(StoreFixture, ADamagedPageIsToldAndNotServedAsTruth) {
  for (int number = 0; number < 300; ++number) add(QString(200, u'x'));
  store.close();
  QByteArray bytes = readFile(storeFolder() + u'/' + kFileName);
  for (qsizetype at = 8192; at < bytes.size(); at += 4096) bytes.replace(at, 64, QByteArray(64, '\x55'));
  writeFile(storeFolder() + u'/' + kFileName, bytes);
  const QString error = store.open(storeFolder());
  EXPECT_FALSE(error.isEmpty() && store.integrityReport().isEmpty());
}

TEST_F(StoreFixture, AStoreThatCannotGrowKeepsItsOldState) {
  add(QStringLiteral("a"));
  store.close();
  const auto fill = [this] {
    ::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{300000, 300000};
    ::setrlimit(RLIMIT_FSIZE, &limit);
    LibraryStore full;
    if (!full.open(storeFolder()).isEmpty()) ::_exit(2);
    try {
      StoreBatch batch(full);
      for (int number = 0; number < 100; ++number) full.tracks().add(named(QString(50000, u'x')));
      batch.commit();
    } catch (const StoreError &) {
      ::_exit(full.tracks().count() == 1 ? 0 : 3);
    }
    ::_exit(4);
  };
  EXPECT_EXIT(fill(), ::testing::ExitedWithCode(0), "");
  reopen();
  EXPECT_EQ(store.tracks().count(), 1);
  EXPECT_EQ(store.integrityReport(), QString());
}

TEST_F(StoreFixture, AnOlderStoreIsUpgradedWithACopyAndAFailedStepChangesNothing) {
  add(QStringLiteral("a"));
  const std::vector<StoreUpgradeStep> steps{
      {kVersion,
       [](StoreDatabase &database) {
         database.execute(QStringLiteral("ALTER TABLE tracks ADD COLUMN extra"));
       }},
      {kVersion + 1, [](StoreDatabase &database) {
         database.execute(QStringLiteral("DELETE FROM tracks"));
         database.execute(QStringLiteral("not SQL"));
       }}};
  EXPECT_THROW(upgradeStore(store.database(), kVersion + 2, steps), StoreError);
  EXPECT_EQ(store.database().answer(QStringLiteral("PRAGMA user_version")).toInt(), kVersion + 1);
  EXPECT_EQ(store.database().answer(QStringLiteral("SELECT count(extra) FROM tracks")).toInt(), 0);
  EXPECT_EQ(store.tracks().count(), 1);
  EXPECT_THROW(upgradeStore(store.database(), kVersion + 2, {}), StoreError);

  const QString copies = folder(QStringLiteral("copies"));
  const QString copy =
      storeFolder() + QStringLiteral("/Music Library (version %1).musiclibrary").arg(kVersion);
  writeFile(copies + u'/' + kFileName, readFile(copy));
  LibraryStore old;
  ASSERT_EQ(old.open(copies), QString());
  EXPECT_EQ(old.tracks().count(), 1);
}
