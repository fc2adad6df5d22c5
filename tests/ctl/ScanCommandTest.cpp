#include "ctl/ProgressBar.h"
#include "tests/ctl/CommandFixture.h"

namespace {

const QString kJson = QStringLiteral("--json");
const QString kLibrary = QStringLiteral("--library");
const QString kPref = QStringLiteral("--pref");
const QString kProblem = QStringLiteral("--problem");

/// What a scan tells of the names in `library()`.
const std::string kNames =
    "\"names\": [{\"type\": \"artist\", \"preferred\": \"Avola\", \"songs\": [\"0000000000000004\", "
    "\"0000000000000003\", \"0000000000000005\", \"0000000000000006\"]}, {\"type\": \"artist\", "
    "\"preferred\": \"The Beatles\", \"songs\": [\"0000000000000002\", \"0000000000000001\"]}]";

}  // namespace

class ScanCommandTest : public CommandFixture {
 protected:
  /// Two groups, one of them of three, and a track of its own.
  QString library() {
    return writeLibrary({track(QStringLiteral("The Beatles"), QStringLiteral("Help!")),
                         track(QStringLiteral("Beatles"), QStringLiteral("Help")),
                         track(QStringLiteral("Avola"), QStringLiteral("Fernando")),
                         track(QStringLiteral("AVOLA"), QStringLiteral("Fernando"), 204),
                         track(QStringLiteral("Avola"), QStringLiteral("fernando"), 196),
                         track(QStringLiteral("Avola"), QStringLiteral("Waterloo"))});
  }
};

TEST_F(ScanCommandTest, DuplicatesComeInGroupsAndTheExitCodeTellsOfThem) {
  EXPECT_EQ(scan({kLibrary, library(), kJson}), 1) << err;
  EXPECT_EQ(
      out,
      "{\"tracks\": 6, \"duplicates\": [[\"0000000000000004\", \"0000000000000003\", \"0000000000000005\"], "
      "[\"0000000000000002\", \"0000000000000001\"]], " +
          kNames + ", \"orphans\": [], \"missing\": []}\n");
  EXPECT_EQ(err, "");
}

TEST_F(ScanCommandTest, ASettingGivenForOneScanCountsAndLeavesNoTrace) {
  const QString file = library();
  EXPECT_EQ(scan({kLibrary, file, kJson, kPref, QStringLiteral("allowedDurationVariation=0")}), 1);
  EXPECT_EQ(out, "{\"tracks\": 6, \"duplicates\": [[\"0000000000000002\", \"0000000000000001\"]], " + kNames +
                     ", \"orphans\": [], \"missing\": []}\n");
  QStringList keys = preferences.keys(services.bundle.identifier);
  keys.removeAll(QStringLiteral("noSystemDeserialize"));
  EXPECT_EQ(keys, (QStringList{QStringLiteral("preferAudioFileBitRate"),
                               QStringLiteral("allowedDurationVariation")}));
}

TEST_F(ScanCommandTest, ASettingGivenForOneScanSurvivesTheFirstLaunch) {
  setPreference(QStringLiteral("preferAudioFileBitRate"), Value());
  EXPECT_EQ(scan({kLibrary, library(), kJson, kPref, QStringLiteral("matchAlbum=true"), kPref,
                  QStringLiteral("noMatchTitle=true"), kPref, QStringLiteral("noScanAtStartup=true")}),
            1);
  EXPECT_NE(
      out.find("[[\"0000000000000004\", \"0000000000000003\", \"0000000000000005\", \"0000000000000006\"]"),
      std::string::npos)
      << out;
}

TEST_F(ScanCommandTest, AReportOnOneKindOfProblemLeavesTheOthersOut) {
  EXPECT_EQ(scan({kLibrary, library(), kJson, kProblem, QStringLiteral("missing")}), 0);
  EXPECT_EQ(out, "{\"tracks\": 6, \"missing\": []}\n");
}

TEST_F(ScanCommandTest, RowsKeepWholeNumbersOf64Bits) {
  EXPECT_EQ(scan({kLibrary, library(), kJson, QStringLiteral("--rows")}), 1);
  EXPECT_NE(out.find("\"duplicates\": [[{\"Persistent ID\": \"0000000000000004\", \"Artist\": \"AVOLA\""),
            std::string::npos);
  EXPECT_NE(out.find("\"Size\": 5000000000,"), std::string::npos);
  EXPECT_NE(out.find("\"DupeGroup\": 1"), std::string::npos);
}

TEST_F(ScanCommandTest, TheReportForReadingShowsEachTrackAndNoControlCharacters) {
  const QString file = writeLibrary({track(QStringLiteral("A&#27;[2J"), QStringLiteral("One")),
                                     track(QStringLiteral("A&#27;[2J"), QStringLiteral("One"), 203)});
  EXPECT_EQ(scan({kLibrary, file}), 1);
  EXPECT_EQ(out,
            "A\xEF\xBF\xBD[2J - One\n"
            "    3:20  MPEG audio file        192 kbps  5000.0 MB  " +
                folder(QStringLiteral("music/1.mp3")).toStdString() +
                "\n    3:23  MPEG audio file        192 kbps  5000.0 MB  " +
                folder(QStringLiteral("music/2.mp3")).toStdString() +
                "\n\n"
                "2 tracks, 1 group of duplicates with 2 tracks, 0 inconsistent names\n");
}

TEST_F(ScanCommandTest, NoProblemsIsExitCodeZero) {
  const QString file = writeLibrary({track(QStringLiteral("A"), QStringLiteral("One"))});
  EXPECT_EQ(scan({kLibrary, file}), 0);
  EXPECT_EQ(out, "1 track, 0 groups of duplicates with 0 tracks, 0 inconsistent names\n");
}

TEST_F(ScanCommandTest, AnInterruptionGivesWhatWasFoundAndSaysSo) {
  bool first = true;
  EXPECT_EQ(scan({kLibrary, library(), kJson}, [&] { return std::exchange(first, false); }), 1);
  EXPECT_EQ(err, "tallyfenctl: cancelled\n");
  EXPECT_EQ(out.substr(0, 12), "{\"tracks\": 6");
}

TEST_F(ScanCommandTest, WrongUseStartsNothing) {
  const QStringList cases[] = {{QStringLiteral("--libary"), QStringLiteral("x")},
                               {kLibrary},
                               {QStringLiteral("--json=1")},
                               {QStringLiteral("file.xml")},
                               {kProblem, QStringLiteral("dupes")},
                               {kPref, QStringLiteral("matchAlbum")},
                               {kPref, QStringLiteral("nonsense=1")},
                               {kPref, QStringLiteral("allowedDurationVariation=soon")}};
  for (const QStringList &arguments : cases) {
    EXPECT_EQ(scan(arguments), 2) << arguments.join(u' ').toStdString();
    EXPECT_NE(err.find("\nusage: tallyfenctl scan "), std::string::npos);
    EXPECT_EQ(out, "");
  }
}

TEST_F(ScanCommandTest, ProgressIsDrawnForAPersonOnlyAndTakenAway) {
  const QString file = library();
  isTerminal = true;
  EXPECT_EQ(scan({kLibrary, file, kJson}), 1);
  EXPECT_NE(err.find("\r[" + std::string(30, '.') + "] "), std::string::npos) << err;
  EXPECT_EQ(err.substr(err.size() - 4), "\r\033[K");
}

TEST(ProgressBar, FillsWithTheShareThatIsDoneAndNeverBeyond) {
  std::istringstream in;
  std::ostringstream out, err;
  Terminal terminal{in, out, err, true};
  ProgressBar bar(terminal);
  bar.setMaximum(8.0);
  bar.setIndeterminate(false);
  bar.setValue(4.0);
  bar.setValue(9.0);
  const std::string half = std::string(15, '#') + std::string(15, '.');
  EXPECT_EQ(err.str(), "\r[" + half + "]  50% \033[K\r[" + std::string(30, '#') + "] 100% \033[K");
}
