#include "ctl/NamesCommand.h"

#include "tests/ctl/CommandFixture.h"

class NamesCommandTest : public CommandFixture {
 protected:
  static QString albumTrack(const char *artist, const char *album, const char *name, const char *more = "") {
    return track(QString::fromUtf8(artist), QString::fromUtf8(name), 200,
                 QStringLiteral("<key>Album</key><string>%1</string>%2")
                     .arg(QString::fromUtf8(album), QString::fromUtf8(more)));
  }
  int names(const QStringList &tracks, const QStringList &more = {}) {
    return scanWith<NamesCommand>(QStringList{QStringLiteral("--library"), writeLibrary(tracks)} + more);
  }
  /// An artist known by another name as "Album Artist" alone, an album in two spellings, a lone artist.
  static QStringList library() {
    return {albumTrack("Avola", "Sun", "One"),
            albumTrack("Avola", "Sun", "Two", "<key>Album Artist</key><string>The Avola</string>"),
            albumTrack("Bran", "Wide Sea", "Three"),
            albumTrack("Bran", "wide sea", "Four"),
            albumTrack("Bran", "Wide Sea", "Five"),
            albumTrack("Coru", "Sea", "Six")};
  }
};

TEST_F(NamesCommandTest, ASpellingThatNoSongBearsIsAnObjectOfTheName) {
  EXPECT_EQ(names(library(), {QStringLiteral("--json")}), 1) << err;
  EXPECT_EQ(
      out,
      "{\"tracks\": 6, \"names\": [{\"type\": \"artist\", \"preferred\": \"The Avola\", \"songs\": "
      "[\"0000000000000001\", \"0000000000000002\", {\"Artist\": \"The Avola\"}]}, {\"type\": \"album\", "
      "\"preferred\": \"Wide Sea\", \"songs\": [\"0000000000000003\", \"0000000000000005\", "
      "\"0000000000000004\"]}]}\n");
}

TEST_F(NamesCommandTest, WholeRowsHoldTheSongsAndNothingThatTheTablesWorkOut) {
  EXPECT_EQ(names(library(), {QStringLiteral("--json"), QStringLiteral("--rows")}), 1) << err;
  for (const char *piece : {"\"inconType\": \"RKIsAlbumMatched\"", "\"inconPref\": \"Wide Sea\"",
                            "\"inconSongs\": [{\"Persistent ID\": \"0000000000000003\""})
    EXPECT_NE(out.find(piece), std::string::npos) << piece;
  EXPECT_EQ(out.find("calc_"), std::string::npos);
}

TEST_F(NamesCommandTest, TheReportForReadingMarksThePreferredSpellingAndCountsSongs) {
  EXPECT_EQ(names(library()), 1) << err;
  EXPECT_EQ(out,
            "Artist\n"
            "   Avola       2 songs\n"
            "  [The Avola]  no song\n"
            "\n"
            "Album by Bran\n"
            "  [Wide Sea]  2 songs\n"
            "   wide sea   1 song\n"
            "\n"
            "6 tracks, 2 inconsistent names\n");
}

TEST_F(NamesCommandTest, NoNamesIsExitCodeZeroAndTheMethodIsASettingOfTheRun) {
  const QStringList two{albumTrack("Kat", "Sun", "One"), albumTrack("Cat", "Sun", "Two")};
  EXPECT_EQ(names(two), 0);
  EXPECT_EQ(out, "2 tracks, 0 inconsistent names\n");
  EXPECT_EQ(names(two, {QStringLiteral("--pref"), QStringLiteral("inconsistentMatchMethod=1")}), 1);
  EXPECT_EQ(names({}, {QStringLiteral("--problem"), QStringLiteral("names")}), 2);
}

TEST_F(NamesCommandTest, AKnownNameIsMetByTheEquivalencesOfTheRun) {
  const QStringList two{albumTrack("Beatle", "Sun", "One"), albumTrack("Beatles", "Sun", "Two")};
  EXPECT_EQ(names(two), 0);
  EXPECT_EQ(names(two, {QStringLiteral("--pref"), QStringLiteral("ignorePlurals=true")}), 1);
  EXPECT_NE(out.find("  [The Beatles]  no song\n"), std::string::npos) << out;
}
