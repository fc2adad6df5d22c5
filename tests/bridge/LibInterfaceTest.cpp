#include <QDir>

#include "bridge/LibraryMapping.h"
#include "platform/FileAddress.h"
#include "support/BMLog.h"
#include "tests/bridge/BridgeFixture.h"
#include "tests/fixtures/MemoryLibrary.h"
#include "values/Keys.h"

namespace {

using LocationType = LibraryMediaItem::LocationType;

class LibInterface : public BridgeTest {
 protected:
  LibInterface() {
    services.libraryFramework = &library;
    setPlatform(services);
    iTunesLibInterface::reset();
  }
  ~LibInterface() override { iTunesLibInterface::reset(); }

  void addTrack(quint64 id, const QString &path) {
    LibraryMediaItem track;
    track.persistentID = id;
    track.locationType = LocationType::File;
    track.location = fileAddressOfPath(path);
    library.tracks.push_back(track);
  }

  MemoryLibrary::List &addList(quint64 id, const QString &name, std::initializer_list<quint64> tracks = {}) {
    MemoryLibrary::List list;
    list.playlist.persistentID = id;
    list.playlist.name = name;
    for (const quint64 track : tracks) list.items.push_back({track, u"file:///m/x.mp3"_qs});
    library.lists.push_back(list);
    return library.lists.back();
  }

  /// The library's own file, as old as the test says.
  QString writeStore(double age) {
    const QString path = writeFile(u"music/iTunes/Music Library.musiclibrary"_qs, "store");
    setAge(path, age);
    return path;
  }
  void setAge(const QString &path, double age) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    const qint64 milliseconds = qint64((time.now().toUnix() - age) * 1000);
    ASSERT_TRUE(file.setFileTime(QDateTime::fromMSecsSinceEpoch(milliseconds), QFile::FileModificationTime));
  }

  /// How long the next question waits after a change made now.
  double waitAfterChange() {
    iTunesLibInterface::libraryObject();
    iTunesInterface::dirtyLibrary();
    const double begin = seconds();
    iTunesLibInterface::libraryObject();
    return seconds() - begin;
  }

  MemoryLibrary library;
};

/// A dictionary as "key=value" lines in its order.
QStringList linesOf(const Dictionary &dictionary) {
  QStringList lines;
  for (const DictionaryEntry &entry : dictionary) {
    QString text = entry.value.toText();
    if (entry.value.isNumber()) text = QString::number(entry.value.toInteger());
    if (entry.value.toDate()) text = entry.value.toDate()->toIsoText();
    if (entry.value.type() == Value::Type::Boolean) text = entry.value.toBool() ? u"true"_qs : u"false"_qs;
    lines += entry.key.text() + u'=' + text;
  }
  lines.sort();
  return lines;
}

}  // namespace

TEST_F(LibInterface, PlaylistsCarryTheMarksOfTheirKind) {
  using Kind = LibraryPlaylist::Kind;
  const std::pair<Kind, const char16_t *> kinds[] = {{Kind::Regular, u""},
                                                     {Kind::Smart, u"Smart Info=true"},
                                                     {Kind::Genius, u"Genius=true"},
                                                     {Kind::Folder, u"Folder=true"},
                                                     {Kind::GeniusMix, u"GeniusMix=true"}};
  for (const auto &[kind, mark] : kinds) {
    LibraryPlaylist playlist;
    playlist.persistentID = 1;
    playlist.name = u"P"_qs;
    playlist.kind = kind;
    QStringList lines = linesOf(iTunesLibInterface::dictionaryOfPlaylist(playlist));
    EXPECT_TRUE(lines.removeOne(u"Name=P"_qs) &&
                lines.removeOne(u"Playlist Persistent ID=0000000000000001"_qs));
    EXPECT_EQ(lines.join(u','), QString::fromUtf16(mark));
  }
  LibraryPlaylist &master = addList(1, u"Library"_qs, {5}).playlist;
  master.isMaster = master.isAllItemsPlaylist = true;
  master.isVisible = false, master.parentID = 2, master.distinguishedKind = 4;
  addList(2, u"Mine"_qs, {5, 5});
  addList(3, u"Empty"_qs);
  const Array playlists = iTunesInterface::getDirectPlaylists();
  const QStringList lines = linesOf(playlists.at(0).toDictionary());
  for (const char16_t *line : {u"Master=true", u"All Items=true", u"Visible=false", u"Distinguished Kind=4",
                               u"Parent Persistent ID=0000000000000002"}) {
    EXPECT_TRUE(lines.contains(QString::fromUtf16(line))) << qPrintable(lines.join(u','));
  }
  const Array items = playlists.at(1).toDictionary().value(keys::PlaylistItems).toArray();
  ASSERT_EQ(items.size(), 2);
  EXPECT_EQ(linesOf(items.at(1).toDictionary()), QStringList{u"Track Persistent ID=0000000000000005"_qs});
  EXPECT_FALSE(items.at(0).toDictionary().isSame(items.at(1).toDictionary()));
  EXPECT_EQ(playlists.at(2).toDictionary().value(keys::PlaylistItems).type(), Value::Type::Array);

  const auto locationsOf = [](const char16_t *pid) {
    const Dictionary found = iTunesLibInterface::getPlaylistWithPersistentID(QString::fromUtf16(pid));
    const Array shown = found.value(keys::PlaylistItems).toArray();
    return shown.at(0).toDictionary().contains(keys::Location);
  };
  EXPECT_TRUE(locationsOf(u"0000000000000002"));
  EXPECT_FALSE(locationsOf(u"0000000000000001")) << "the whole library shows no locations";
  EXPECT_TRUE(iTunesLibInterface::getPlaylistWithPersistentID(u"9"_qs).isNull());
}

TEST_F(LibInterface, AChangeIsWaitedForUntilTheLibrarysFileShowsIt) {
  addList(1, u"P"_qs);
  EXPECT_NEAR(waitAfterChange(), 5.0, 0.01) << "no file of the library was found";
  const QString store = writeStore(-2.0);
  EXPECT_NEAR(waitAfterChange(), 0.0, 0.01);
  setAge(store, 100.0);
  EXPECT_NEAR(waitAfterChange(), 60.25, 0.26);
  setAge(store, 100.0);
  library.saved = Date{seconds() + 1000};
  EXPECT_NEAR(waitAfterChange(), 0.0, 0.01) << "the library knows that it is saved";
  EXPECT_EQ(library.reloads, 4);
  iTunesLibInterface::libraryObject();
  EXPECT_EQ(library.reloads, 4) << "a clean library is not read again";
  EXPECT_TRUE(logContains(u"[iTunesLib] waited 5.0 seconds before reloading (5.0)"_qs))
      << qPrintable(logText());
}

TEST_F(LibInterface, WhoAsksWhileAnotherWaitsGetsTheOldState) {
  addList(1, u"P"_qs);
  iTunesLibInterface::libraryObject();
  iTunesInterface::dirtyLibrary();
  Workers workers;
  workers.detach(u"waits"_qs, [] { iTunesLibInterface::libraryObject(); });
  time.run(1.0);
  const double begin = seconds();
  EXPECT_EQ(iTunesLibInterface::libraryObject(), &library);
  EXPECT_EQ(seconds(), begin);
  EXPECT_EQ(library.reloads, 0);
  time.run(10.0);
  workers.joinAll();
  EXPECT_EQ(library.reloads, 1);
}

TEST_F(LibInterface, TheMostRecentOfTheUsualFilesIsTheLibrarys) {
  library.musicFolder = fileAddressOfPath(folder(u"home/Media"_qs));
  const struct {
    const char16_t *path;
    double age;
  } files[] = {{u"home/Media/iTunes Library.itl", 50},
               {u"home/Music/Music Library.musiclibrary", 40},
               {u"home/iTunes/iTunes Library", 30},
               {u"music/Music/iTunes Library.xml", 1},
               {u"music/iTunes/Other Library.itl", 1},
               {u"music/Music/Music Library.itl", -7201},
               {u"music/iTunes/iTunes Library.musiclibrary", 172801}};
  for (const auto &[path, age] : files) setAge(writeFile(QString::fromUtf16(path), "x"), age);
  EXPECT_EQ(iTunesLibInterface::musicLibraryFolder(), folder(u"home/iTunes"_qs));
  EXPECT_EQ(logText().count(u"MostRecentlyModifiedLibraryPath"_qs), 1);
}

TEST_F(LibInterface, FiftyFilesHaveNoCommonParentAndFiftyOneHave) {
  for (const int count : {50, 51}) {
    iTunesLibInterface::reset();
    library.tracks.clear();
    for (int track = 1; track <= count; ++track)
      addTrack(quint64(track), u"/home/me/Big/Music/Artist %1/Album/1.mp3"_qs.arg(track % 7));
    addTrack(1000, QString());
    library.tracks.back().locationType = LocationType::Url;
    EXPECT_EQ(iTunesInterface::musicLibraryMostCommonParentMediaPath(),
              count == 51 ? u"/home/me/Big"_qs : QString());
  }
}

TEST_F(LibInterface, TheLibraryIsReachedByItsFolderOrByAPlaylist) {
  EXPECT_FALSE(iTunesInterface::haveDirectLibraryAccess());
  EXPECT_TRUE(iTunesLibInterface::getTracks().isNull());
  addList(1, u"P"_qs);
  EXPECT_TRUE(iTunesInterface::haveDirectLibraryAccess());
  library.lists.clear();
  library.musicFolder = u"file:///music/"_qs;
  EXPECT_EQ(iTunesInterface::musicLibraryMediaPath(), u"/music"_qs);
  library.mediaFolder = u"file:///media/"_qs;
  EXPECT_EQ(iTunesInterface::musicLibraryMediaPath(), u"/media"_qs);
  addTrack(5, u"/media/a.mp3"_qs);
  const Dictionary whole = iTunesLibInterface::getMusicLibraryDictionaryWithError(nullptr);
  EXPECT_EQ(whole.value(keys::MusicFolder).toText(), u"file:///media/"_qs);
  EXPECT_EQ(whole.value(keys::LibraryPersistentID).toText(), u"B557A2B"_qs);
  EXPECT_TRUE(whole.value(keys::Tracks).toDictionary().contains(Key(u"0000000000000005")));

  iTunesLibInterface::reset();
  library.failure = u"not today"_qs;
  EXPECT_FALSE(iTunesInterface::haveDirectLibraryAccess());
  iTunesInterface::dirtyLibrary();
  const double begin = seconds();
  EXPECT_EQ(iTunesLibInterface::libraryObject(), nullptr);
  EXPECT_EQ(seconds(), begin) << "there is nothing to wait for";
  EXPECT_EQ(logText().count(u"not today"_qs), 1);
}

TEST_F(LibInterface, ATrackIsAskedForByItsIdentifier) {
  addTrack(0xAB, u"/media/a b.mp3"_qs);
  addTrack(0xAC, u"/media/c.mp3"_qs);
  addList(1, u"P"_qs);
  library.pictures[0xAB] = "picture";
  const std::pair<const char16_t *, int> cases[] = {
      {u"00000000000000AB", 1}, {u"ab", 1}, {u"AC", 0}, {u"AD", -1}, {u"", -1}, {u"no number", -1}};
  for (const auto &[pid, answer] : cases)
    EXPECT_EQ(iTunesInterface::artworkAvailableForPersistentID(QString::fromUtf16(pid)), answer);
  EXPECT_EQ(iTunesInterface::artworkForPersistentID(u"AB"_qs), "picture");
  EXPECT_EQ(iTunesLibInterface::pathOfTrackWithPID(u"AB"_qs), u"/media/a b.mp3"_qs);
  EXPECT_TRUE(iTunesLibInterface::mergePlayedFromTrackWithPIDToTrackWithPID(u"AB"_qs, u"AC"_qs)
                  .startsWith(u"error:"_qs));
}

TEST_F(LibInterface, AReadThatBreaksOffIsNoLibrary) {
  library.mediaFolder = u"file:///media/"_qs;
  addTrack(1, u"/media/a.mp3"_qs);
  addTrack(2, u"/media/b.mp3"_qs);
  addList(1, u"P"_qs, {1, 2});
  addList(2, u"Q"_qs, {2, 1});
  const struct {
    const char *what;
    int reads;
    bool (*isThere)();
  } cases[] = {
      {"tracks", 1, [] { return !iTunesLibInterface::getTracks().isNull(); }},
      {"playlists", 3, [] { return !iTunesInterface::getDirectPlaylists().isNull(); }},
      {"playlist", 2,
       [] { return !iTunesLibInterface::getPlaylistWithPersistentID(u"0000000000000002"_qs).isNull(); }},
      {"survey", 2,
       [] {
         return iTunesInterface::
             playlistInfoWithMinCountContainingTrackPIDIgnorePlaylistNamesIgnorePlaylistNamesPrefixedWith(
                    0, u"1"_qs, {}, {})
                 .has_value();
       }},
      {"library", 4,
       [] {
         QString error;
         const bool isThere = !iTunesLibInterface::getMusicLibraryDictionaryWithError(&error).isNull();
         EXPECT_EQ(isThere, error.isEmpty());
         return isThere;
       }},
  };
  for (const auto &[what, reads, isThere] : cases) {
    for (int good = 0; good <= reads; ++good) {
      library.goodReads = good;
      EXPECT_EQ(isThere(), good == reads) << what << " after " << good;
    }
  }
}

TEST_F(LibInterface, ASurveyLooksAtTheUsersOwnPlaylists) {
  const auto survey = [](qint64 minimum, const QString &pid) {
    return iTunesInterface::
        playlistInfoWithMinCountContainingTrackPIDIgnorePlaylistNamesIgnorePlaylistNamesPrefixedWith(
            minimum, pid, {u"Ignored"_qs}, {u"ZZZ_"_qs});
  };
  EXPECT_FALSE(survey(0, {}).has_value());
  addList(1, u"Library"_qs, {1, 2, 3, 4}).playlist.isMaster = true;
  addList(2, u"Hidden"_qs, {1, 2, 3, 4}).playlist.isVisible = false;
  addList(3, u"Bought"_qs, {1, 2, 3, 4}).playlist.distinguishedKind = 19;
  addList(4, u"Clever"_qs, {1, 2, 3, 4}).playlist.kind = LibraryPlaylist::Kind::Smart;
  addList(5, u"Ignored"_qs, {1, 2, 3, 4});
  addList(6, u"ZZZ_TF-1"_qs, {1, 2, 3, 4});
  addList(7, u"Long"_qs, {2, 3, 4});
  addList(8, u"Short"_qs, {1});
  const PlaylistSurvey by3 = survey(3, {}).value();
  EXPECT_EQ(by3.maxCount, 3);
  ASSERT_EQ(by3.playlists.size(), 1U);
  EXPECT_EQ(by3.playlists[0].name, u"Long"_qs);
  const PlaylistSurvey with1 = survey(3, u"1"_qs).value();
  ASSERT_EQ(with1.playlists.size(), 2U);
  EXPECT_FALSE(with1.playlists[0].containsTrack);
  EXPECT_TRUE(with1.playlists[1].containsTrack);
  EXPECT_EQ(with1.playlists[1].pid, u"0000000000000008"_qs);
  EXPECT_TRUE(survey(9, {}).value().playlists.empty());
}
