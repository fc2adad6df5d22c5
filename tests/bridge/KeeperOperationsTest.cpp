#include "tests/bridge/BridgeFixture.h"
#include "tests/bridge/MortalKeeper.h"
#include "tools/demo/Mp3Writer.h"
#include "tools/demo/Picture.h"
#include "values/Keys.h"

// Each operation with its real script text, against Music Keeper in this process.
using namespace iTunesInterface;

namespace {

const QString kUnknown = u"00000000DEADBEEF"_qs;
const Date kEarlier{500'000'000.0}, kLater{600'000'000.0};

class KeeperOperations : public BridgeTest {
 protected:
  KeeperOperations() : keeper(folder(u"library"_qs)) {
    services.scriptHost = &keeper;
    setPlatform(services);
  }

  QString song(const QString &name, const QString &artist, const QByteArray &picture = {}) {
    SongTags tags;
    tags.name = name;
    tags.artist = artist;
    tags.artwork = picture;
    return writeFile(u"music/%1.mp3"_qs.arg(name), makeMp3(tags, 128, 5000).bytes);
  }
  QString trackWith(const std::vector<std::pair<Key, Value>> &entries) {
    const Dictionary record = Dictionary::make();
    record.set(keys::TrackType, u"File"_qs);
    for (const auto &[key, value] : entries) record.set(key, value);
    return keeper.addTrack(record);
  }
  QString text(const QString &pid, Key key) { return keeper.trackValue(pid, key).toText(); }
  QString playlistNamed(const QString &name) {
    return keeper.tell(u"return persistent ID of (first user playlist whose name is \"%1\")"_qs.arg(name));
  }
  int numberOf(const QString &pid) {
    return keeper
        .tell(
            u"return database ID of (first track of library playlist 1 whose persistent ID is \"%1\")"_qs.arg(
                pid))
        .toInt();
  }

  KeeperHost keeper;
};

bool beginsWith(const std::optional<QString> &answer, const QString &start) {
  return answer && answer->startsWith(start);
}

}  // namespace

TEST_F(KeeperOperations, ItAnswersItsVersionAndItsFields) {
  const std::optional<QString> version = versionString();
  ASSERT_TRUE(version);
  EXPECT_GT(iTunesMajorVersion(), 0) << qPrintable(*version);
  const QString pid =
      trackWith({{keys::Name, u"So What"_qs}, {keys::Artist, u"Miles"_qs}, {keys::Year, 1959}});
  keeper.addPlaylist(u"Jazz"_qs, {pid});
  EXPECT_EQ(intValueOfFieldOfTrackIndexOfPlayList(u"year"_qs, 1, u"Jazz"_qs), 1959);
  EXPECT_EQ(valueOfFieldOfTrackIndexOfPlayList(u"artist"_qs, 1, u"Jazz"_qs), u"Miles"_qs);
  EXPECT_EQ(intValueOfFieldOfTrackIndexOfPlayList(u"year"_qs, 2, u"Jazz"_qs), -1);
  EXPECT_EQ(valueOfFieldOfTrackNamed(u"artist"_qs, u"so what"_qs), u"Miles"_qs);
  EXPECT_FALSE(valueOfFieldOfTrackNamed(u"artist"_qs, u"missing"_qs));
  EXPECT_EQ(lastScriptErrorNumber(), -1728);
  writeLibraryNow();
  EXPECT_GT(keeper.exports, 0);
  quitMusicAppWithin(4);
  EXPECT_EQ(keeper.quits, 1);
}

TEST_F(KeeperOperations, ARefreshReadsTheFileAgainAndTellsItsPath) {
  const QString path = song(u"Blue"_qs, u"New Artist"_qs);
  const QString pid = keeper.addTrack(u"Blue"_qs, u"Old Artist"_qs, {}, path);
  const QString gone = keeper.addTrack(u"Gone"_qs, u"Nobody"_qs, {}, folder(u"music/gone.mp3"_qs));
  EXPECT_EQ(refreshAndGetPathOfSongWithPID(pid), path);
  EXPECT_EQ(text(pid, keys::Artist), u"New Artist"_qs);
  EXPECT_EQ(refreshAndGetPathOfSongWithIDInPlaylist(numberOf(pid), QString()), path);
  EXPECT_EQ(refreshAndGetPathOfSongWithTitleArtist(u"Blue"_qs, u"New Artist"_qs), path);
  for (const std::optional<QString> &answer :
       {refreshAndGetPathOfSongWithPID(gone), refreshAndGetPathOfSongWithPID(kUnknown),
        refreshAndGetPathOfSongWithIDInPlaylist(999999, QString()),
        refreshAndGetPathOfSongWithIDInPlaylist(numberOf(pid), u"No Such List"_qs),
        refreshAndGetPathOfSongWithTitleArtist(u"Blue"_qs, u"Old Artist"_qs)})
    EXPECT_TRUE(beginsWith(answer, u"error: "_qs)) << qPrintable(answer.value_or(u"nothing"_qs));
}

TEST_F(KeeperOperations, NamesOfAnyCharactersArriveWhole) {
  const QString pid = trackWith({{keys::Name, u"N"_qs}, {keys::Artist, u"same"_qs}});
  for (const QString &value :
       {u"He said \"hi\" \\ back"_qs, u"Björk \U0001F600 ?"_qs, u"Same"_qs, u"100% @ %@ %d"_qs,
        u"日本語\u0301"_qs, QString(u"lone "_qs + QChar(0xD800)), QString()}) {
    EXPECT_EQ(changeValueInTrackWithPIDOfTypeToValue(pid, u"Artist"_qs, value), u"1"_qs) << qPrintable(value);
    EXPECT_EQ(text(pid, keys::Artist), value);
  }
  EXPECT_EQ(changeValueInTrackWithPIDOfTypeToValue(pid, u"Album"_qs, u"A"_qs), u"1"_qs);
  EXPECT_EQ(changeValueInTrackWithPIDOfTypeToValue(pid, u"Album Artist"_qs, u"B"_qs), u"1"_qs);
  EXPECT_EQ(text(pid, keys::Album) + text(pid, keys::AlbumArtist), u"AB"_qs);
  EXPECT_TRUE(
      beginsWith(changeValueInTrackWithPIDOfTypeToValue(pid, u"Composer"_qs, u"C"_qs), u"error: "_qs));
  EXPECT_TRUE(
      beginsWith(changeValueInTrackWithPIDOfTypeToValue(kUnknown, u"Album"_qs, u"C"_qs), u"error: "_qs));
  EXPECT_EQ(text(pid, keys::Name), u"N"_qs);
}

TEST_F(KeeperOperations, PlayedInformationIsAddedUp) {
  const struct {
    std::vector<std::pair<Key, Value>> from, to, result;
  } cases[] = {
      {{{keys::PlayCount, 3}, {keys::PlayDateUTC, kLater}, {keys::SkipCount, 1}, {keys::SkipDate, kEarlier}},
       {{keys::PlayCount, 4}, {keys::PlayDateUTC, kEarlier}, {keys::SkipCount, 2}, {keys::SkipDate, kLater}},
       {{keys::PlayCount, 7}, {keys::PlayDateUTC, kLater}, {keys::SkipCount, 3}, {keys::SkipDate, kLater}}},
      {{{keys::PlayCount, 2}, {keys::PlayDateUTC, kEarlier}, {keys::Rating, 80}},
       {},
       {{keys::PlayCount, 2}, {keys::PlayDateUTC, kEarlier}, {keys::Rating, 80}}},
      {{{keys::Rating, 100}},
       {{keys::Rating, 40}, {keys::PlayCount, 1}},
       {{keys::Rating, 40}, {keys::PlayCount, 1}}},
      {{{keys::Rating, 60}, {keys::RatingComputed, true}}, {{keys::PlayCount, 1}}, {{keys::Rating, Value()}}},
  };
  for (const auto &expected : cases) {
    const QString from = trackWith(expected.from), to = trackWith(expected.to);
    EXPECT_EQ(mergePlayedFromTrackWithPIDToTrackWithPID(from, to), std::nullopt);
    for (const auto &[key, value] : expected.result)
      EXPECT_TRUE(isEqual(keeper.trackValue(to, key), value))
          << qPrintable(key.text()) << ' ' << qPrintable(description(keeper.trackValue(to, key)));
  }
  EXPECT_TRUE(
      beginsWith(mergePlayedFromTrackWithPIDToTrackWithPID(kUnknown, kUnknown + u'0'), u"error: "_qs));
}

TEST_F(KeeperOperations, InformationIsCopiedButNotCountsAndDates) {
  std::vector<std::pair<Key, Value>> texts{{keys::Compilation, true}, {keys::Rating, 80}};
  for (const Key key : {keys::Name, keys::Artist, keys::AlbumArtist, keys::Album, keys::Composer, keys::Genre,
                        keys::Grouping, keys::Comments, keys::SortName, keys::SortArtist, keys::SortAlbum,
                        keys::SortAlbumArtist, keys::SortComposer})
    texts.emplace_back(key, key.text());
  for (const Key key :
       {keys::Year, keys::TrackNumber, keys::TrackCount, keys::DiscNumber, keys::DiscCount, keys::BPM})
    texts.emplace_back(key, int(texts.size()));
  std::vector<std::pair<Key, Value>> whole = texts;
  whole.insert(whole.end(), {{keys::PlayCount, 5}, {keys::SkipCount, 4}, {keys::PlayDateUTC, kLater}});
  const QString from = trackWith(whole);
  const QString to = trackWith({{keys::Name, u"N"_qs}, {keys::PlayCount, 1}, {keys::PlayDateUTC, kEarlier}});
  EXPECT_EQ(doCopyInfoFromTrackPIDToTrackPid(from, to).value_or(QString()).toStdString(), "");
  for (const auto &[key, value] : texts)
    EXPECT_TRUE(isEqual(keeper.trackValue(to, key), value)) << qPrintable(key.text());
  EXPECT_EQ(keeper.trackValue(to, keys::PlayCount).toInteger(), 1);
  EXPECT_TRUE(isEqual(keeper.trackValue(to, keys::PlayDateUTC), kEarlier));
  EXPECT_TRUE(keeper.trackValue(to, keys::SkipCount).isNull());

  // What is equal is not written.
  const qint64 stamp = keeper.store().changeStamp();
  EXPECT_EQ(doCopyInfoFromTrackPIDToTrackPid(from, to), std::nullopt);
  EXPECT_EQ(keeper.store().changeStamp(), stamp);
  EXPECT_TRUE(beginsWith(doCopyInfoFromTrackPIDToTrackPid(kUnknown, to), u"error: "_qs));
  // The lack of a rating is none to be copied.
  EXPECT_EQ(doCopyInfoFromTrackPIDToTrackPid(trackWith({{keys::Name, u"unrated"_qs}}), to), std::nullopt);
  EXPECT_EQ(text(to, keys::Name), u"unrated"_qs);
  EXPECT_EQ(keeper.trackValue(to, keys::Rating).toInteger(), 80);
}

TEST_F(KeeperOperations, LyricsAreCopiedFromFileToFile) {
  const auto added = [this](const QString &name) {
    return addToiTunesSongAtPathToPlaylistNamed(song(name, u"A"_qs), {}).value_or(QString());
  };
  const auto lyrics = [this](const QString &pid, const QString &statement) {
    return keeper.tell(statement.arg(
        u"lyrics of (first track of library playlist 1 whose persistent ID is \"%1\")"_qs.arg(pid)));
  };
  const QString from = added(u"Sung"_qs), to = added(u"Hummed"_qs);
  lyrics(from, u"set %1 to \"la\" & return & \"lá\""_qs);
  EXPECT_EQ(doCopyInfoFromTrackPIDToTrackPid(from, to), std::nullopt);
  EXPECT_TRUE(lyrics(to, u"return %1"_qs).startsWith(u"la"_qs));
  EXPECT_EQ(lyrics(to, u"return %1"_qs), lyrics(from, u"return %1"_qs));
}

TEST_F(KeeperOperations, EveryScriptThatGivesUpSaysThatItTimedOut) {
  const QString pid = keeper.addTrack(u"T"_qs), list = keeper.addPlaylist(u"L"_qs, {pid});
  const QString path = song(u"Blue"_qs, u"A"_qs);
  MortalKeeper slow(keeper);
  slow.isStuck = true;
  services.scriptHost = &slow;
  setPlatform(services);
  const IgnoredPlaylists ours{u"U"_qs, u"A"_qs, u"Z"_qs, u"C"_qs};
  const std::optional<QString> answers[] = {
      refreshAndGetPathOfSongWithPID(pid), refreshAndGetPathOfSongWithIDInPlaylist(7, QString()),
      refreshAndGetPathOfSongWithTitleArtist(u"T"_qs, u"A"_qs),
      changeValueInTrackWithPIDOfTypeToValue(pid, u"Album"_qs, u"A"_qs),
      mergePlayedFromTrackWithPIDToTrackWithPID(pid, kUnknown),
      doCopyInfoFromTrackPIDToTrackPid(pid, kUnknown),
      addTrackWithPIDToPlaylistNamedCreate(pid, u"L"_qs, true),
      // The compiled library's.
      reunitePathWithPID(path, pid), addToiTunesSongAtPathToPlaylistNamed(path, {}), removeSongWithPID(pid),
      addTrackWithPIDToPlaylistWithPID(pid, list), getMaxPlaylistLength(ours),
      incrementalRebuildPlaylist(list, {pid}, pid, u"Z1"_qs)};
  for (size_t i = 0; i < std::size(answers); ++i) {
    EXPECT_TRUE(beginsWith(answers[i], u"error: "_qs) && answers[i]->contains(u"timed out"))
        << i << ' ' << qPrintable(answers[i].value_or(u"nothing"_qs));
  }
  // No text that could be taken for an answer.
  EXPECT_TRUE(playlistsInfo().isNull());
  EXPECT_TRUE(pathOfCurrentlyPlayingTrack().isNull());
}

TEST_F(KeeperOperations, UnkeptTracksGoToThePlaylistOfThatNameOnce) {
  const QString pid = keeper.addTrack(u"One"_qs), other = keeper.addTrack(u"Two"_qs);
  keeper.addSmartPlaylist(u"Unkept"_qs);
  keeper.addFolder(u"Unkept"_qs);
  const QString lowerCase = keeper.addPlaylist(u"unkept"_qs);
  for (const QString &track : {pid, other, pid})
    EXPECT_EQ(addTrackWithPIDToPlaylistNamedCreate(track, u"Unkept"_qs, true), std::nullopt);
  EXPECT_EQ(keeper.playlistNames().count(u"Unkept"_qs), 3);
  const QString made = keeper.tell(
      u"return persistent ID of (first user playlist whose (name is \"Unkept\") and (smart is false) and "
      "(persistent ID is not \"%1\") and (special kind is none))"_qs.arg(lowerCase));
  EXPECT_EQ(keeper.namesIn(made), (QStringList{u"One"_qs, u"Two"_qs}));
  EXPECT_TRUE(keeper.namesIn(lowerCase).isEmpty());
  EXPECT_TRUE(beginsWith(addTrackWithPIDToPlaylistNamedCreate(kUnknown, u"Unkept"_qs, false), u"error: "_qs));
  EXPECT_TRUE(logContains(u"without doCreate unsupported"_qs));
}

TEST_F(KeeperOperations, AFoundFileBecomesTheTracksLocation) {
  const QString path = song(u"Found \"it\""_qs, u"A"_qs);
  const QString pid = keeper.addTrack(u"Lost"_qs, u"A"_qs, {}, folder(u"music/lost.mp3"_qs));
  EXPECT_EQ(reunitePathWithPID(path, pid), u"OK"_qs);
  EXPECT_EQ(refreshAndGetPathOfSongWithPID(pid), path);
  EXPECT_TRUE(beginsWith(reunitePathWithPID(folder(u"music/none.mp3"_qs), pid), u"error: "_qs));
  EXPECT_TRUE(beginsWith(reunitePathWithPID(path, kUnknown), u"error: "_qs));
}

TEST_F(KeeperOperations, AFileIsAddedWithItsPlaylist) {
  const QString path = song(u"New"_qs, u"A"_qs);
  const std::optional<QString> pid = addToiTunesSongAtPathToPlaylistNamed(path, u"Adopted"_qs);
  ASSERT_TRUE(pid && pid->size() == 16) << qPrintable(pid.value_or(QString()));
  EXPECT_EQ(text(*pid, keys::Name), u"New"_qs);
  EXPECT_EQ(keeper.namesIn(playlistNamed(u"Adopted"_qs)), QStringList{u"New"_qs});
  // Again: the same track, and still once in the list.
  EXPECT_EQ(addToiTunesSongAtPathToPlaylistNamed(path, u"Adopted"_qs), pid);
  EXPECT_EQ(keeper.namesIn(playlistNamed(u"Adopted"_qs)), QStringList{u"New"_qs});
  EXPECT_EQ(addToiTunesSongAtPathToPlaylistNamed(path, {}), pid);
  EXPECT_EQ(keeper.playlistNames().count(u"Adopted"_qs), 1);
  const QString noSong = writeFile(u"music/readme.txt"_qs, "text");
  EXPECT_TRUE(beginsWith(addToiTunesSongAtPathToPlaylistNamed(noSong, {}), u"error: "_qs));
  EXPECT_TRUE(beginsWith(addToiTunesSongAtPathToPlaylistNamed(folder(u"none.mp3"_qs), {}), u"error: "_qs));
}

TEST_F(KeeperOperations, ARemovedTrackLeavesItsFile) {
  const QString path = song(u"Unwanted"_qs, u"A"_qs);
  const QString pid = keeper.addTrack(u"Unwanted"_qs, u"A"_qs, {}, path),
                other = keeper.addTrack(u"Other"_qs);
  const QString list = keeper.addPlaylist(u"L"_qs, {pid, other, pid});
  EXPECT_EQ(removeSongWithPID(pid), std::nullopt);
  EXPECT_EQ(lastScriptErrorNumber(), 0);
  EXPECT_EQ(keeper.namesIn(), QStringList{u"Other"_qs});
  EXPECT_EQ(keeper.namesIn(list), QStringList{u"Other"_qs});
  EXPECT_FALSE(readFile(path).isEmpty());
  EXPECT_TRUE(beginsWith(removeSongWithPID(pid), u"error: "_qs));
  // Too late for the script, but done.
  MortalKeeper slow(keeper);
  slow.deletesLate = true;
  services.scriptHost = &slow;
  setPlatform(services);
  EXPECT_EQ(removeSongWithPID(other), std::nullopt);
  EXPECT_TRUE(keeper.namesIn().isEmpty());
}

TEST_F(KeeperOperations, ATrackIsAppendedToAPlaylistByItsIdentifier) {
  const QString pid = keeper.addTrack(u"One"_qs);
  const QString list = keeper.addPlaylist(u"L"_qs, {pid});
  EXPECT_EQ(addTrackWithPIDToPlaylistWithPID(pid, list), u"Done"_qs);
  EXPECT_EQ(keeper.namesIn(list), (QStringList{u"One"_qs, u"One"_qs}));
  for (const QString &refusing : {keeper.addSmartPlaylist(u"S"_qs), keeper.addFolder(u"F"_qs), kUnknown})
    EXPECT_TRUE(beginsWith(addTrackWithPIDToPlaylistWithPID(pid, refusing), u"error: "_qs));
}

TEST_F(KeeperOperations, OnlyTheUsersOwnPlaylistsAreMeasured) {
  const QString pid = keeper.addTrack(u"T"_qs);
  const IgnoredPlaylists ours{u"Unkept"_qs, u"Adopted"_qs, u"ZZZ_TF"_qs, u"Converting"_qs};
  EXPECT_EQ(getMaxPlaylistLength(ours), u"0"_qs);
  for (const char *name : {"Unkept", "Adopted", "Converting", "ZZZ_TF-1"})
    keeper.addPlaylist(QString::fromLatin1(name), QStringList(9, pid));
  keeper.addSmartPlaylist(u"Smart"_qs, QStringList(8, pid));
  const QString two = keeper.addPlaylist(u"Two | three@"_qs, QStringList(2, pid));
  const QString three = keeper.addPlaylist(u"unkept"_qs, QStringList(3, pid));
  keeper.addPlaylist(u""_qs, QStringList(3, pid));
  // One of the application's own, of a kind that has no name.
  const Dictionary own = Dictionary::make();
  own.set(keys::Name, u"Own"_qs);
  own.set(keys::DistinguishedKind, 65);
  const TrackRow track = keeper.store().tracks().rows().front();
  keeper.store().entries().append(keeper.store().playlists().make(own), TrackRows(7, track));
  EXPECT_EQ(getMaxPlaylistLength(ours), u"3"_qs);
  EXPECT_EQ(playlistNamesAtLength(2, ours),
            (QHash<QString, QString>{{two, u"Two / three@"_qs}, {three, u"unkept"_qs}}));
  EXPECT_EQ(playlistNamesAtLength(3, ours), (QHash<QString, QString>{{three, u"unkept"_qs}}));
  EXPECT_TRUE(playlistNamesAtLength(4, ours).isEmpty());
}

TEST_F(KeeperOperations, EveryPlaylistHasItsLine) {
  const QString jazz = keeper.addFolder(u"Jazz"_qs);
  const QString bop = keeper.addPlaylist(u"Be|@bop\r|"_qs, {}, jazz),
                smart = keeper.addSmartPlaylist(u"Best"_qs);
  const QString library = keeper.tell(u"return persistent ID of library playlist 1"_qs);
  QHash<QString, Dictionary> found;
  for (const Value &value : playlistsInfo())
    found.insert(value.toDictionary().value(keys::PlaylistPersistentID).toText(), value.toDictionary());
  EXPECT_TRUE(found.contains(library) && found.contains(jazz));
  ASSERT_TRUE(found.contains(bop) && found.contains(smart));
  EXPECT_EQ(found[bop].value(keys::ParentPersistentID).toText(), jazz);
  EXPECT_EQ(found[bop].value(keys::Name).toText(), u"Be/@bop |"_qs);
  EXPECT_TRUE(found[bop].value(keys::SmartInfo).isNull());
  EXPECT_EQ(found[smart].value(keys::SmartInfo).toText(), u"true"_qs);
  EXPECT_EQ(found[smart].value(keys::ParentPersistentID).toText(), QString());
}

TEST_F(KeeperOperations, PicturesAreCountedRemovedAndEmbedded) {
  const QString path = song(u"Covered"_qs, u"A"_qs, makeCover(16, 0x334455, 0xffffff));
  const QString plainPath = song(u"Bare"_qs, u"A"_qs);
  const QString pid = addToiTunesSongAtPathToPlaylistNamed(path, {}).value_or(QString());
  const QString bare = addToiTunesSongAtPathToPlaylistNamed(plainPath, {}).value_or(QString());
  EXPECT_EQ(artworkCountsForPIDs({pid, kUnknown, bare}), (QStringList{u"1"_qs, u"-1"_qs, u"0"_qs}));
  EXPECT_EQ(artworkCountForDBIDTitlePath(numberOf(pid), {}, {}), u"1"_qs);
  EXPECT_EQ(artworkCountForDBIDTitlePath(0, u"Covered"_qs, path), u"1"_qs);
  EXPECT_EQ(artworkCountForDBIDTitlePath(0, u"Covered"_qs, plainPath), u"-1"_qs);
  EXPECT_TRUE(embedArtworkForTitlePath(u"Covered"_qs, path));
  EXPECT_FALSE(embedArtworkForTitlePath(u"Bare"_qs, plainPath));
  EXPECT_FALSE(embedArtworkForTitlePath(u"None"_qs, path));
  EXPECT_EQ(removeAllArtworkFromSongWithDBIDTitlePath(numberOf(pid), {}, {}), u"1"_qs);
  EXPECT_EQ(artworkCountsForPIDs({pid}), QStringList{u"0"_qs});
  EXPECT_EQ(removeAllArtworkFromSongWithDBIDTitlePath(0, u"Covered"_qs, path), u"0"_qs);
  EXPECT_EQ(removeAllArtworkFromSongWithDBIDTitlePath(0, u"None"_qs, path), u"-1"_qs);
}

TEST_F(KeeperOperations, TracksPlayByPathByPlaceAndByName) {
  const QString path = song(u"Blue"_qs, u"A"_qs), second = song(u"Green"_qs, u"A"_qs);
  const QString blue = addToiTunesSongAtPathToPlaylistNamed(path, {}).value_or(QString());
  const QString green = addToiTunesSongAtPathToPlaylistNamed(second, {}).value_or(QString());
  keeper.addPlaylist(u"L"_qs, {green, blue});
  EXPECT_TRUE(pathOfCurrentlyPlayingTrack().isNull());
  EXPECT_TRUE(playTrackAtPath(path));
  EXPECT_EQ(pathOfCurrentlyPlayingTrack(), path);
  pausePlaying();
  EXPECT_TRUE(pathOfCurrentlyPlayingTrack().isNull());
  resumePlaying();
  EXPECT_EQ(pathOfCurrentlyPlayingTrack(), path);
  EXPECT_TRUE(playTrackNamedByArtistIndexOfPlaylist(u"Green"_qs, u"A"_qs, 1, u"L"_qs));
  EXPECT_EQ(pathOfCurrentlyPlayingTrack(), second);
  // A wrong place falls back on the names.
  EXPECT_TRUE(playTrackNamedByArtistIndexOfPlaylist(u"Blue"_qs, u"A"_qs, 1, u"L"_qs));
  EXPECT_EQ(pathOfCurrentlyPlayingTrack(), path);
  EXPECT_FALSE(playTrackNamedByArtistIndexOfPlaylist(u"Red"_qs, u"A"_qs, 7, u"L"_qs));
  EXPECT_FALSE(playTrackAtPath(folder(u"music/none.mp3"_qs)));
}
