#include <QDir>
#include <QFile>

#include "bridge/iTunesLibInterface.h"
#include "keeper/library/EntryTable.h"
#include "keeper/library/LibraryStore.h"
#include "keeper/library/PlaylistTable.h"
#include "keeper/library/StoreBatch.h"
#include "keeper/library/TrackTable.h"
#include "platform/keeper/KeeperLibraryFramework.h"
#include "support/Workers.h"
#include "tests/fixtures/TestPlatform.h"
#include "values/Keys.h"

namespace {

/// The keeper's store, changed through the keeper's own tables and read directly.
class KeeperLibrary : public TestPlatform {
 protected:
  KeeperLibrary() : library(std::make_unique<KeeperLibraryFramework>(folder(u"store"_qs))) {
    services.libraryFramework = library.get();
    setPlatform(services);
  }

  void openStore() { ASSERT_EQ(store.open(folder(u"store"_qs)).toStdString(), ""); }
  TrackRow addTrack(const QString &name, const std::function<void(const Dictionary &)> &more = {}) {
    const Dictionary keys = Dictionary::make();
    keys.set(keys::Name, name);
    keys.set(keys::Artist, u"Ärtist"_qs);
    keys.set(keys::TrackType, u"File"_qs);
    keys.set(keys::Location, u"file:///music/%1.mp3"_qs.arg(name));
    if (more) more(keys);
    return store.tracks().add(keys);
  }
  PlaylistRow addPlaylist(const QString &name, const TrackRows &tracks) {
    const Dictionary keys = Dictionary::make();
    keys.set(keys::Name, name);
    const PlaylistRow row = store.playlists().make(keys);
    store.entries().append(row, tracks);
    return row;
  }
  QString pidOf(TrackRow row) { return store.tracks().record(row).value(keys::PersistentID).toText(); }
  static Dictionary tracks() { return iTunesLibInterface::getTracks(); }

  LibraryStore store;
  std::unique_ptr<KeeperLibraryFramework> library;
};

}  // namespace

TEST_F(KeeperLibrary, AStoreThatComesLaterIsFoundAtTheReload) {
  EXPECT_FALSE(iTunesLibInterface::canAccessLibrary());
  openStore();
  const TrackRow one = addTrack(u"One"_qs);
  iTunesLibInterface::reloadLibrary();
  EXPECT_TRUE(iTunesLibInterface::canAccessLibrary());
  EXPECT_EQ(iTunesLibInterface::musicLibraryMediaPath(), folder(u"store/iTunes Media"_qs));
  EXPECT_TRUE(tracks().contains(Key(pidOf(one))));
}

TEST_F(KeeperLibrary, AChangeIsSeenAtOnceAndWithoutAWait) {
  openStore();
  const TrackRow one = addTrack(u"One"_qs);
  EXPECT_EQ(tracks().size(), 1);
  KeyChanges changes;
  changes.push_back({keys::Grouping, u"a key of its own"_qs});
  changes.push_back({keys::Rating, 60});
  store.tracks().set(one, changes);
  addTrack(u"Two"_qs);
  iTunesLibInterface::dirtyLibrary();
  const double begin = time.now().seconds;
  const Dictionary all = tracks();
  EXPECT_EQ(time.now().seconds, begin);
  EXPECT_EQ(all.size(), 2);
  EXPECT_EQ(all.value(Key(pidOf(one))).toDictionary().value(keys::Rating).toInteger(), 60);
}

TEST_F(KeeperLibrary, TracksAndPlaylistsComeWholeAndInOrder) {
  openStore();
  const TrackRow one = addTrack(u"One"_qs, [](const Dictionary &keys) {
    keys.set(keys::Size, qint64(5'000'000'000));
    keys.set(keys::TotalTime, 1000);
    keys.set(keys::Compilation, true);
    keys.set(keys::PlayDateUTC, Date{100});
    keys.set(keys::ArtworkCount, 1);
    keys.set(keys::Comments, u"日本"_qs);
  });
  const TrackRow two = addTrack(u"Two"_qs, [](const Dictionary &keys) {
    keys.set(keys::TrackType, u"URL"_qs);
    keys.set(keys::Location, u"http://example.org"_qs);
  });
  addPlaylist(u"Mine"_qs, {two, one, two});
  const Dictionary whole = iTunesLibInterface::getMusicLibraryDictionaryWithError(nullptr);
  const Dictionary first = whole.value(keys::Tracks).toDictionary().value(Key(pidOf(one))).toDictionary();
  EXPECT_EQ(first.value(keys::Size).toInteger(), 5'000'000'000);
  EXPECT_EQ(first.value(keys::PlayDate).toInteger(), 100);
  EXPECT_EQ(first.value(keys::Comments).toText(), u"日本"_qs);
  EXPECT_EQ(first.value(keys::Artist).toText(), u"Ärtist"_qs);
  EXPECT_TRUE(first.value(keys::Compilation).toBool());
  EXPECT_FALSE(first.contains(keys::ArtworkCount));
  const Dictionary second = whole.value(keys::Tracks).toDictionary().value(Key(pidOf(two))).toDictionary();
  EXPECT_EQ(second.value(keys::TrackType).toText(), u"URL"_qs);
  EXPECT_FALSE(second.contains(keys::Location));
  const Array playlists = whole.value(keys::Playlists).toArray();
  ASSERT_EQ(playlists.size(), 2);
  EXPECT_TRUE(playlists.at(0).toDictionary().value(keys::Master).toBool());
  const Array items = playlists.at(1).toDictionary().value(keys::PlaylistItems).toArray();
  ASSERT_EQ(items.size(), 3);
  EXPECT_EQ(items.at(1).toDictionary().value(keys::TrackPersistentID).toText(), pidOf(one));

  const QString mine = playlists.at(1).toDictionary().value(keys::PlaylistPersistentID).toText();
  const Array located =
      iTunesLibInterface::getPlaylistWithPersistentID(mine).value(keys::PlaylistItems).toArray();
  EXPECT_EQ(located.at(1).toDictionary().value(keys::Location).toText(), u"file:///music/One.mp3"_qs);
  EXPECT_EQ(iTunesLibInterface::artworkAvailableForPersistentID(pidOf(one)), 1);
  EXPECT_EQ(iTunesLibInterface::artworkAvailableForPersistentID(pidOf(two)), 0);
  library->setPictureReader([](const QString &path) { return path.toUtf8(); });
  EXPECT_EQ(iTunesLibInterface::artworkForPersistentID(pidOf(one)), "/music/One.mp3");
  const auto survey = iTunesLibInterface::
      playlistInfoWithMinCountContainingTrackPIDIgnorePlaylistNamesIgnorePlaylistNamesPrefixedWith(
          9, pidOf(one), {}, {});
  ASSERT_EQ(survey->playlists.size(), 1U);
  EXPECT_EQ(survey->playlists[0].pid, mine);
}

TEST_F(KeeperLibrary, ATrackIsWhatTheLibrarysFileSaysOfIt) {
  openStore();
  const TrackRow whole = addTrack(u"One"_qs, [](const Dictionary &keys) {
    using namespace keys;
    for (const Key text : {SortName, SortArtist, Album, SortAlbum, AlbumArtist, SortAlbumArtist, Composer,
                           SortComposer, Genre, keys::Kind, Comments, ContentRating})
      keys.set(text, u"the "_qs + text.text());
    double seconds = 4.0;
    for (const Key date : {DateAdded, DateModified, ReleaseDate, SkipDate, PlayDateUTC})
      keys.set(date, Date{++seconds});
    keys.set(PlayDate, 9);
    int number = 40;
    for (const Key amount : {TrackNumber, TrackCount, DiscNumber, DiscCount, TotalTime, Year, BitRate,
                             SampleRate, PlayCount, Rating, Size})
      keys.set(amount, ++number);
    for (const Key mark : {Compilation, HasVideo}) keys.set(mark, true);
  });
  const auto direct = [](const QString &pid) { return tracks().value(Key(pid)).toDictionary(); };
  const Dictionary record = store.tracks().record(whole), read = direct(pidOf(whole));
  EXPECT_EQ(read.size(), record.size() - 1) << "all but the number of the track";
  for (const DictionaryEntry &entry : record) {
    if (entry.key == keys::TrackID) continue;
    EXPECT_TRUE(isEqual(read.value(entry.key), entry.value)) << entry.key.text().toStdString();
  }
  for (const QString &type : {u"URL"_qs, u"Remote"_qs}) {
    const QString pid = pidOf(addTrack(type, [&](const Dictionary &keys) {
      keys.set(keys::TrackType, type);
      keys.set(keys::Size, 9);
    }));
    EXPECT_EQ(direct(pid).value(keys::TrackType).toText(), type);
    EXPECT_EQ(direct(pid).size(), 4) << "no place and no size: a name, an artist, a type, an ID";
  }
}

TEST_F(KeeperLibrary, TracksAndPlaylistsAreOfOneMoment) {
  struct Interrupted : KeeperLibraryFramework {
    using KeeperLibraryFramework::KeeperLibraryFramework;
    bool visitMediaItems(const std::function<bool(const LibraryMediaItem &)> &visit) override {
      const bool wereRead = KeeperLibraryFramework::visitMediaItems(visit);
      reloadData();
      behindTheTracks();
      return wereRead;
    }
    std::function<void()> behindTheTracks;
  };
  openStore();
  addTrack(u"One"_qs);
  Interrupted interrupted(folder(u"store"_qs));
  interrupted.behindTheTracks = [this] { addPlaylist(u"Late"_qs, {addTrack(u"Two"_qs)}); };
  services.libraryFramework = &interrupted;
  setPlatform(services);
  iTunesLibInterface::reset();
  for (const qsizetype count : {1, 2}) {
    const Dictionary whole = iTunesLibInterface::getMusicLibraryDictionaryWithError(nullptr);
    EXPECT_EQ(whole.value(keys::Tracks).toDictionary().size(), count);
    EXPECT_EQ(whole.value(keys::Playlists).toArray().size(), count) << "the master playlist, and those added";
  }
  iTunesLibInterface::reset();
}

TEST_F(KeeperLibrary, ADamagedPageIsNoShorterLibrary) {
  openStore();
  StoreBatch batch(store);
  for (int track = 0; track < 200; ++track) {
    addTrack(u"Song %1"_qs.arg(track),
             [](const Dictionary &keys) { keys.set(keys::Comments, QString(200, u'c')); });
  }
  batch.commit();
  store.close();
  const QString path = folder(u"store/Music Library.musiclibrary"_qs);
  QByteArray bytes = readFile(path);
  constexpr qsizetype kPage = 4096;
  const qsizetype damaged = bytes.indexOf(QByteArray(200, 'c'), bytes.size() / 2) / kPage * kPage;
  ASSERT_GT(damaged, 0);
  writeFile(u"store/Music Library.musiclibrary"_qs, bytes.replace(damaged, kPage, QByteArray(kPage, '\xff')));
  EXPECT_TRUE(iTunesLibInterface::canAccessLibrary());
  QString error;
  EXPECT_TRUE(tracks().isNull());
  EXPECT_TRUE(iTunesLibInterface::getMusicLibraryDictionaryWithError(&error).isNull());
  EXPECT_FALSE(error.isEmpty());
  EXPECT_TRUE(logText().contains(path.section(u'/', 0, -2) + u": "_qs)) << qPrintable(logText());
}

TEST_F(KeeperLibrary, AThreadReadsWhileAnotherDoes) {
  openStore();
  for (int track = 0; track < 50; ++track) addTrack(u"Song %1"_qs.arg(track));
  Workers workers;
  std::atomic<int> good = 0;
  for (int thread = 0; thread < 3; ++thread) {
    workers.detach(u"reads"_qs, [&good] {
      for (int turn = 0; turn < 5; ++turn) good += int(tracks().size() == 50);
    });
  }
  EXPECT_EQ(tracks().size(), 50);
  workers.joinAll();
  EXPECT_EQ(good, 15);
}

TEST_F(KeeperLibrary, AStoreIsReadWhereNothingCanBeWrittenBesideIt) {
  openStore();
  addTrack(u"One"_qs);
  store.close();
  const QString path = folder(u"store/Music Library.musiclibrary"_qs);
  const QByteArray bytes = readFile(path);
  // Stands in the way of what the database would put there, whoever runs the test.
  QDir().mkpath(path + u"-shm"_qs);
  EXPECT_EQ(tracks().size(), 1);
  EXPECT_EQ(readFile(path), bytes);
}

TEST_F(KeeperLibrary, AFileThatIsNoStoreIsNamedOnceAndLeftAlone) {
  const QString path = writeFile(u"store/Music Library.musiclibrary"_qs, QByteArray(5000, 'x'));
  for (int turn = 0; turn < 2; ++turn) EXPECT_FALSE(iTunesLibInterface::canAccessLibrary());
  EXPECT_EQ(logText().count(u"the library cannot be read"_qs), 1) << qPrintable(logText());
  EXPECT_EQ(readFile(path), QByteArray(5000, 'x'));
}
