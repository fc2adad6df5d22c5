#include <QDir>

#include "app/library/LibraryFile.h"
#include "tests/ctl/CommandFixture.h"

namespace {

struct BadLibrary {
  const char *what;
  QByteArray bytes;
};

}  // namespace

using BadInputTest = CommandFixture;

TEST_F(BadInputTest, AFileThatIsNoLibraryGivesOneMessageAndNoReport) {
  const BadLibrary cases[] = {
      {"empty", ""},
      {"four bytes", "<pli"},
      {"text", "hello, this is no property list"},
      {"another list", "<plist><dict><key>A</key><string>b</string></dict></plist>"},
      {"an array", "<plist><array><string>b</string></array></plist>"},
      {"a broken binary list", "bplist00\xFF\xFF\xFF\xFF\xFF\xFF"},
  };
  for (const BadLibrary &bad : cases) {
    const QString path = writeFile(QStringLiteral("bad.xml"), bad.bytes);
    const QString options = QStringLiteral("--json --library ") + path;
    for (const char *command : {"library info ", "library tracks ", ""}) {
      SCOPED_TRACE(std::string(bad.what) + ' ' + command);
      iTunesInterface::resetLibraryCache();
      EXPECT_EQ(*command ? run(QString::fromUtf8(command) + options) : scan(options.split(u' ')), 1);
      EXPECT_EQ(out, "");
      EXPECT_NE(err, "");
    }
  }
}

TEST_F(BadInputTest, AMissingFileOrFolderIsNamed) {
  const QString library = writeLibrary({track(QStringLiteral("A"), QStringLiteral("One"))});
  EXPECT_EQ(run(QStringLiteral("library info --library /nowhere/library.xml")), 1);
  EXPECT_EQ(err, "tallyfenctl: the library \"/nowhere/library.xml\" does not exist\n");
  EXPECT_EQ(run(QStringLiteral("library info --library /proc")), 1);
  EXPECT_EQ(err, "tallyfenctl: the library \"/proc\" is no file\n");
  EXPECT_EQ(run(QStringLiteral("inspect plist /nowhere/x.plist")), 1);
  EXPECT_NE(err.find("/nowhere/x.plist"), std::string::npos);
  EXPECT_EQ(scan({QStringLiteral("--library"), library, QStringLiteral("--media"),
                  QStringLiteral("/nowhere/media")}),
            1);
  EXPECT_EQ(err, "tallyfenctl: the media folder \"/nowhere/media\" does not exist\n");
}

TEST_F(BadInputTest, NoLibraryAnywhereSaysHowToNameOne) {
  for (const char *line : {"library info", "library tracks --json", "scan --json"}) {
    EXPECT_EQ(run(QString::fromUtf8(line)), 1) << line;
    EXPECT_EQ(err, "tallyfenctl: no music library found; name its file with --library FILE\n") << line;
    EXPECT_EQ(out, "") << line;
  }
}

TEST_F(BadInputTest, ACutLibraryIsReadAsFarAsItGoesAndSaidToBeCut) {
  const QString track1 = track(QStringLiteral("A"), QStringLiteral("One"));
  const QByteArray whole = readFile(writeLibrary({track1, track1, track1}));
  const QString path = writeFile(QStringLiteral("cut.xml"), whole.left(whole.lastIndexOf("<key>3</key>")));
  EXPECT_EQ(scan({QStringLiteral("--library"), path, QStringLiteral("--json")}), 1);
  EXPECT_EQ(out.substr(0, 12), "{\"tracks\": 2");
  EXPECT_EQ(err, "tallyfenctl: the library \"" + path.toStdString() +
                     "\" ends in the middle; what comes before was read\n");
}

TEST_F(BadInputTest, AStoredSettingOfTheWrongTypeIsNamedAndTheScanGoesOn) {
  setPreference(QStringLiteral("allowedDurationVariation"), QByteArray("x"));
  setPreference(QStringLiteral("manualMediaPath"), 17);
  const QString library = writeLibrary({track(QStringLiteral("A"), QStringLiteral("One"))});
  EXPECT_EQ(scan({QStringLiteral("--library"), library}), 0);
  EXPECT_NE(err.find("the setting allowedDurationVariation should be a whole number"), std::string::npos)
      << err;
  EXPECT_NE(err.find("the setting manualMediaPath should be a text"), std::string::npos) << err;
}
