#include "ctl/MergeCommand.h"

#include "tests/ctl/CommandFixture.h"

class MergeCommandTest : public CommandFixture {
 protected:
  /// A library of one group and another song, with files.
  QString writeGroups() {
    const auto rated = [](const char *name, int bitRate) {
      return track(QStringLiteral("A"), QString::fromUtf8(name), 200,
                   QStringLiteral("<key>Bit Rate</key><integer>%1</integer>").arg(bitRate));
    };
    const QString library = writeLibrary({rated("One", 320), rated("One", 128), rated("Two", 320)});
    for (int i = 1; i <= 3; ++i)
      writeFile(QStringLiteral("music/%1.mp3").arg(i), QByteArray(100000 * i, 'x'));
    return library;
  }
  int merge(const QString &library, const QStringList &more) {
    return scanWith<MergeCommand>(QStringList{QStringLiteral("--library"), library} + more);
  }
};

TEST_F(MergeCommandTest, AWrongWishIsRefusedBeforeAnythingIsRead) {
  const struct {
    const char *line, *complaint;
  } cases[] = {
      {"--yes --dry-run", "contradict"},
      {"--yes --library x.xml", "only be looked at"},
      {"--group 0", "--group takes a group's number"},
      {"--group x", "--group takes a group's number"},
      {"--policy bin", "--policy is trash, folder or playlist"},
      {"--policy trash --folder x", "--folder goes with"},
  };
  for (const auto &one : cases) {
    EXPECT_EQ(run(QStringLiteral("merge ") + QString::fromUtf8(one.line)), 2) << one.line;
    EXPECT_NE(err.find(one.complaint), std::string::npos) << err;
    EXPECT_EQ(out, "");
  }
}

TEST_F(MergeCommandTest, ThePlanTellsWhichFileGoesWhereAndTouchesNothing) {
  const QString library = writeGroups();
  const std::string kept = folder(QStringLiteral("music/1.mp3")).toStdString();
  const std::string other = folder(QStringLiteral("music/2.mp3")).toStdString();
  EXPECT_EQ(merge(library, {QStringLiteral("--dry-run"), QStringLiteral("--json")}), 1) << err;
  EXPECT_EQ(out,
            "{\"plan\": {\"policy\": \"trash\", \"folder\": null, \"playlistsKnown\": false, \"groups\": "
            "[{\"group\": 1, \"title\": \"A \\\"One\\\"\", \"kept\": \"0000000000000001\", \"info\": "
            "\"0000000000000002\", \"removed\": [\"0000000000000002\"], \"files\": [{\"pid\": "
            "\"0000000000000002\", \"path\": \"" +
                other +
                "\", \"bytes\": 200000, \"fate\": \"trash\"}], \"playlists\": [], \"missing\": null}], "
                "\"rows\": 1, \"bytes\": 200000}, \"outcome\": null}\n");
  EXPECT_EQ(merge(library, {QStringLiteral("--policy"), QStringLiteral("playlist")}), 1);
  EXPECT_NE(out.find("\n1 group to merge, 1 copy to collect (0 bytes)\n"), std::string::npos) << out;
  EXPECT_NE(err.find("nothing has been changed; a library named with --library is only looked at"),
            std::string::npos)
      << err;
  EXPECT_TRUE(QFile::exists(QString::fromStdString(kept)) && QFile::exists(QString::fromStdString(other)));
}

TEST_F(MergeCommandTest, WhatIsNotThereIsToldInOneLine) {
  const QString library = writeGroups();
  const struct {
    QStringList wishes;
    const char *message;
  } cases[] = {{{QStringLiteral("--group"), QStringLiteral("7")}, "there is no group 7"},
               {{QStringLiteral("--folder"), folder(QStringLiteral("gone"))}, "there is no folder \""}};
  for (const auto &one : cases) {
    EXPECT_EQ(merge(library, one.wishes), 1);
    EXPECT_NE(err.find(one.message), std::string::npos) << err;
    EXPECT_EQ(out, "");
  }
}

TEST_F(MergeCommandTest, ACopyWhoseFileIsGoneIsNotMergedAndNothingToDoIsDone) {
  const QString library = writeGroups();
  QFile::remove(folder(QStringLiteral("music/2.mp3")));
  EXPECT_EQ(merge(library, {}), 0) << err;
  EXPECT_EQ(out, "0 groups to merge, 0 copies to remove (0 bytes)\n");
}
