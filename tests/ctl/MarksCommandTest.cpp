#include "ctl/MarksCommand.h"

#include "tests/ctl/CommandFixture.h"

class MarksCommandTest : public CommandFixture {
 protected:
  static QString played(int count, int bitRate, const char *more = "") {
    return track(QStringLiteral("A"), QStringLiteral("One"), 200,
                 QStringLiteral("<key>Play Count</key><integer>%1</integer><key>Bit Rate</key>"
                                "<integer>%2</integer>%3")
                     .arg(count)
                     .arg(bitRate)
                     .arg(QString::fromUtf8(more)));
  }
  int marks(const QStringList &tracks, const QStringList &more = {}) {
    const QString library = writeLibrary(tracks);
    for (qsizetype i = 0; i < tracks.size(); ++i)
      writeFile(QStringLiteral("music/%1.mp3").arg(i + 1), QByteArray(100000, 'x'));
    return scanWith<MarksCommand>(QStringList{QStringLiteral("--library"), library} + more);
  }
};

TEST_F(MarksCommandTest, EachGroupTellsItsTwoRowsAndTheReasons) {
  setPreference(QStringLiteral("preferInfoTypes"), [] {
    const Array list = Array::make();
    list.append(QStringLiteral("7"));
    list.append(QStringLiteral("1"));
    return list;
  }());
  EXPECT_EQ(marks({played(3, 320), played(9, 128), played(5, 192)}, {QStringLiteral("--json")}), 1) << err;
  EXPECT_EQ(
      out,
      "{\"groups\": [{\"group\": 1, \"rows\": [\"0000000000000001\", \"0000000000000002\", "
      "\"0000000000000003\"], \"info\": {\"pid\": \"0000000000000002\", \"row\": 1, \"criterion\": 1, "
      "\"reason\": \"most played\", \"score\": 9}, \"audio\": {\"pid\": \"0000000000000001\", \"row\": 0, "
      "\"criterion\": 0, \"reason\": \"highest quality\", \"score\": 288}}]}\n");
}

TEST_F(MarksCommandTest, WithoutASingleWinnerTheLastRowIsTakenForNoCriterion) {
  EXPECT_EQ(marks({played(3, 320), played(3, 320)}, {QStringLiteral("--json")}), 1) << err;
  EXPECT_NE(out.find("\"info\": {\"pid\": \"0000000000000002\", \"row\": 1, \"criterion\": null, \"reason\": "
                     "\"last row, as no criterion left a single one\", \"score\": null}"),
            std::string::npos)
      << out;
}

TEST_F(MarksCommandTest, GroupsOfDifferentTitlesAreMarkedToo) {
  EXPECT_EQ(marks({track(QStringLiteral("A"), QStringLiteral("One")),
                   track(QStringLiteral("A"), QStringLiteral("Two"))},
                  {QStringLiteral("--json"), QStringLiteral("--pref"), QStringLiteral("noMatchTitle=true")}),
            1);
  EXPECT_NE(out.find("\"audio\": {\"pid\": "), std::string::npos) << out;
}

TEST_F(MarksCommandTest, TheReportForReadingShowsTheRowsAndNamesAFileThatCannotBeUsed) {
  const QString file = folder(QStringLiteral("music/1.mp3"));
  const QStringList tracks{played(9, 320), played(3, 192)};
  EXPECT_EQ(marks(tracks, {QStringLiteral("--pref"), QStringLiteral("preferInfoTypes=1")}), 1) << err;
  const std::string row =
      "    3:20  MPEG audio file        320 kbps  5000.0 MB  " + file.toStdString() + "\n";
  EXPECT_EQ(out, "A - One\n  information: most played (criterion 1, score 9)\n" + row +
                     "  audio: highest quality (criterion 0, score 288)\n" + row +
                     "\n1 group of duplicates\n");
  const QString library = writeLibrary(tracks);
  EXPECT_EQ(scanWith<MarksCommand>({QStringLiteral("--library"), library}), 1);
  EXPECT_NE(out.find("(criterion 0, no usable file)"), std::string::npos) << out;
}

TEST_F(MarksCommandTest, NoGroupsIsExitCodeZero) {
  EXPECT_EQ(marks({track(QStringLiteral("A"), QStringLiteral("One"))}, {QStringLiteral("--json")}), 0);
  EXPECT_EQ(out, "{\"groups\": []}\n");
  EXPECT_EQ(marks({track(QStringLiteral("A"), QStringLiteral("One"))}, {QStringLiteral("--rows")}), 2);
}
