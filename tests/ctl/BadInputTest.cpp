#include <QDir>

#include "app/library/LibraryFile.h"
#include "tests/ctl/CommandFixture.h"

namespace {

struct BadLibrary {
  const char *what;
  QByteArray bytes;
  const char *message;
};

}  // namespace

using BadInputTest = CommandFixture;

TEST_F(BadInputTest, AFileThatIsNoLibraryGivesOneMessageAndNoReport) {
  const BadLibrary cases[] = {
      {"empty", "", "the library"},
      {"four bytes", "<pli", "the library"},
      {"text", "hello, this is no property list", "the library"},
      {"another list", "<plist><dict><key>A</key><string>b</string></dict></plist>", "the library"},
      {"an array", "<plist><array><string>b</string></array></plist>", "the library"},
      {"a broken binary list", "bplist00\xFF\xFF\xFF\xFF\xFF\xFF", "the library"},
  };
  for (const BadLibrary &bad : cases) {
    const QString path = writeFile(QStringLiteral("bad %1.xml").arg(QString::fromUtf8(bad.what)), bad.bytes);
    for (const QString &command : {QStringLiteral("info"), QStringLiteral("tracks"), QString()}) {
      const QStringList arguments{QStringLiteral("--library"), path, QStringLiteral("--json")};
      iTunesInterface::resetLibraryCache();
      std::istringstream in;
      std::ostringstream output, errors;
      Terminal terminal{in, output, errors};
      const int code =
          command.isEmpty()
              ? scan(arguments)
              : CommandTable().run(QStringList{QStringLiteral("library"), command} + arguments, terminal);
      EXPECT_EQ(code, 1) << bad.what << " " << command.toStdString();
      EXPECT_EQ(command.isEmpty() ? out : output.str(), "") << bad.what;
      EXPECT_NE(command.isEmpty() ? err : errors.str(), "") << bad.what;
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

TEST_F(BadInputTest, ABinaryLibraryReadsAsItsXmlDoes) {
  QString error;
  const QString xml = writeLibrary(
      {track(QStringLiteral("A"), QStringLiteral("One")), track(QStringLiteral("A"), QStringLiteral("One"))});
  const Value root = services.propertyLists->parse(readFile(xml), &error);
  const QString binary =
      writeFile(QStringLiteral("binary.xml"),
                services.propertyLists->write(root, SystemPropertyList::Format::Binary, &error));
  EXPECT_EQ(scan({QStringLiteral("--library"), binary, QStringLiteral("--json")}), 1);
  EXPECT_EQ(out,
            "{\"tracks\": 2, \"duplicates\": [[\"0000000000000001\", \"0000000000000002\"]], \"names\": [], "
            "\"orphans\": [], \"missing\": []}\n");
  EXPECT_EQ(err, "");
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
