#include "tests/bridge/BridgeFixture.h"
#include "values/Keys.h"

// What the operations ask of the application and how they read its answers.
using namespace iTunesInterface;

namespace {

const QString kPID = u"0123456789ABCDEF"_qs;

class Operations : public BridgeTest {
 protected:
  // The script that the last call ran, in one line; empty if it ran none.
  QString asked() {
    const QStringList all = host.scripts();
    const QString last = all.size() > seen ? all.last() : QString();
    seen = all.size();
    return QString(last).replace(u'\r', u'|');
  }
  qsizetype seen = 0;
};

}  // namespace

TEST_F(Operations, AClosedApplicationOrAnEmptyNameRunsNothing) {
  const QString none, pid = kPID, path = u"/a.mp3"_qs;
  const auto nothingRuns = [&] {
    for (const QString &answer :
         {refreshAndGetPathOfSongWithPID(none).value_or(none),
          refreshAndGetPathOfSongWithIDInPlaylist(0, none).value_or(none),
          refreshAndGetPathOfSongWithIDInPlaylist(-1, none).value_or(none),
          refreshAndGetPathOfSongWithTitleArtist(none, pid).value_or(none),
          refreshAndGetPathOfSongWithTitleArtist(pid, none).value_or(none),
          reunitePathWithPID(none, pid).value_or(none), reunitePathWithPID(path, none).value_or(none),
          addToiTunesSongAtPathToPlaylistNamed(none, pid).value_or(none),
          rebuildPlaylistUsingTempNameOldTrackPIDsNewTrackPID(pid, pid, {pid}, pid).value_or(none)})
      EXPECT_TRUE(answer.isNull());
    EXPECT_EQ(asked(), QString());
  };
  nothingRuns();
  setRunning(false);
  EXPECT_FALSE(refreshAndGetPathOfSongWithPID(pid));
  EXPECT_FALSE(refreshAndGetPathOfSongWithIDInPlaylist(7, none));
  EXPECT_FALSE(refreshAndGetPathOfSongWithTitleArtist(pid, pid));
  EXPECT_FALSE(reunitePathWithPID(path, pid));
  EXPECT_FALSE(addToiTunesSongAtPathToPlaylistNamed(path, none));
  EXPECT_TRUE(pathOfCurrentlyPlayingTrack().isNull());
  pausePlaying();
  resumePlaying();
  nothingRuns();
}

TEST_F(Operations, AClosedApplicationIsNotStartedToQuit) {
  session.running.clear();
  quitMusicAppWithin(4);
  EXPECT_EQ(asked(), QString());
}

TEST_F(Operations, PlayingStartsAClosedApplicationAndGivesItTwoSeconds) {
  setRunning(false);
  host.answer(u"1.0"_qs);
  host.answer(u"1"_qs);
  const double start = seconds();
  EXPECT_TRUE(playTrackAtPath(u"/a.mp3"_qs));
  EXPECT_EQ(seconds() - start, 2.0);
  EXPECT_EQ(host.scripts().size(), 2);
  setRunning(true);
  host.answer(u"0"_qs);
  host.answer(u"1"_qs);
  EXPECT_TRUE(playTrackNamedByArtistIndexOfPlaylist(u"T"_qs, u"A"_qs, 2, u"P"_qs));
  EXPECT_EQ(host.scripts().size(), 4);
  // Without a place or a playlist the names alone are asked for.
  EXPECT_FALSE(playTrackNamedByArtistIndexOfPlaylist(u"T"_qs, u"A"_qs, 0, u"P"_qs));
  EXPECT_FALSE(playTrackNamedByArtistIndexOfPlaylist(u"T"_qs, u"A"_qs, 2, QString()));
  EXPECT_EQ(host.scripts().size(), 6);
  EXPECT_EQ(seconds() - start, 2.0);
}

TEST_F(Operations, TheCurrentTrackIsAskedForWithALimitOfASecond) {
  host.answerAfter(0.5, u"/now.mp3"_qs);
  EXPECT_EQ(pathOfCurrentlyPlayingTrack(), u"/now.mp3"_qs);
  const double start = seconds();
  host.answerAfter(5, u"/late.mp3"_qs);
  EXPECT_TRUE(pathOfCurrentlyPlayingTrack().isNull());
  EXPECT_NEAR(seconds() - start, 1.0, 0.15);
}

TEST_F(Operations, PlaylistLinesNeedFiveFields) {
  host.answer(u"Jazz|@1111|@4|@true|@AAAA|@more\rshort|@2222|@|@\r|@3333|@|@yes|@"_qs);
  const Array found = playlistsInfo();
  ASSERT_EQ(found.size(), 2);
  const Dictionary first = found.at(0).toDictionary(), second = found.at(1).toDictionary();
  EXPECT_EQ(first.value(keys::Name).toText(), u"Jazz"_qs);
  EXPECT_EQ(first.value(keys::PlaylistPersistentID).toText(), u"1111"_qs);
  EXPECT_EQ(first.value(keys::DistinguishedKind).toText(), u"4"_qs);
  EXPECT_EQ(first.value(keys::SmartInfo).toText(), u"true"_qs);
  EXPECT_EQ(first.value(keys::ParentPersistentID).toText(), u"AAAA"_qs);
  EXPECT_EQ(second.value(keys::PlaylistPersistentID).toText(), u"3333"_qs);
  EXPECT_FALSE(second.contains(keys::SmartInfo));
  host.answer(ScriptFailure{-600, {}, 0, 0});
  EXPECT_TRUE(playlistsInfo().isNull());
}

TEST_F(Operations, ArtworkCountsComeForEveryTrackOrNotAtAll) {
  const QStringList pids{u"A"_qs, u"B"_qs};
  host.answer(u"1\r0\r"_qs);
  EXPECT_EQ(artworkCountsForPIDs(pids), (QStringList{u"1"_qs, u"0"_qs}));
  EXPECT_TRUE(asked().contains(u"{\"A\", \"B\"}"_qs));
  for (const QString &answer : {u"1\r"_qs, u"1"_qs, u"1\r0\r2\r"_qs, QString()}) {
    host.answer(answer);
    EXPECT_FALSE(artworkCountsForPIDs(pids)) << qPrintable(answer);
  }
  host.answer(ScriptFailure{-600, {}, 0, 0});
  EXPECT_EQ(artworkCountForDBIDTitlePath(7, u"T"_qs, u"/p"_qs), u"-1"_qs);
}

TEST_F(Operations, LongPlaylistsAreNamesAndIdentifiersInPairs) {
  const struct {
    const char *answer;
    QHash<QString, QString> found;
  } cases[] = {
      {"A|@B@|1|@2", {{u"1"_qs, u"A"_qs}, {u"2"_qs, u"B"_qs}}},
      {" A \r\n|@ |@C@|1|@2|@3", {{u"1"_qs, u"A"_qs}, {u"3"_qs, u"C"_qs}}},
      {"A|@B@|1", {{u"1"_qs, u"A"_qs}}},
      {"A@|", {}},
      {"@|", {}},
      {"A|@B", {}},
      {"A@|1@|2", {}},
      {"error: no", {}},
  };
  for (const auto &expected : cases) {
    host.answer(QString::fromUtf8(expected.answer));
    EXPECT_EQ(playlistNamesAtLength(7500, {u"U"_qs, u"A"_qs, u"Z"_qs, u"C"_qs}), expected.found)
        << expected.answer;
  }
  EXPECT_TRUE(
      asked().contains(u"getPlaylistNamesAndPIDsAboveLength(\"7500\", \"U\", \"A\", \"Z\", \"C\")"_qs));
}
