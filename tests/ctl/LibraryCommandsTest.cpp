#include "tests/ctl/CommandFixture.h"

using LibraryCommandsTest = CommandFixture;

TEST_F(LibraryCommandsTest, InfoTellsWhyTracksWereDroppedAndWhoNamedTheMediaFolder) {
  const QString path = writeLibrary(
      {track(QStringLiteral("A"), QStringLiteral("One")),
       track(QStringLiteral("A"), QStringLiteral("Two"), 10, QStringLiteral("<key>Has Video</key><true/>")),
       QStringLiteral("<key>Kind</key><string>MPEG audio file</string>"),
       QStringLiteral("<key>Name</key><string>x</string>")});
  ASSERT_EQ(run(QStringLiteral("library info --json --library ") + path), 0) << err;
  const std::string date = services.fileFacts->modificationDate(path)->toIsoText().toStdString();
  EXPECT_EQ(out,
            "{\"path\": \"" + path.toStdString() + "\", \"date\": \"" + date +
                "\", \"tracks\": 4, \"kept\": 1, \"dropped\": 3, \"droppedBecause\": {\"no kind\": 1, "
                "\"video\": 1, "
                "\"no duration\": 1, \"ignored kind\": 0, \"ignored part of kind\": 0, \"ringtone\": 0}, "
                "\"playlists\": 1, \"mediaFolder\": \"/M\", \"mediaFolderSource\": \"Music Folder\"}\n");
  setPreference(QStringLiteral("manualMediaPath"), QStringLiteral("/elsewhere"));
  ASSERT_EQ(run(QStringLiteral("library info --library ") + path), 0);
  EXPECT_NE(out.find("Media folder:  /elsewhere (named by: manualMediaPath; not there)"), std::string::npos)
      << out;
}

TEST_F(LibraryCommandsTest, TracksComeSortedWithTheirKeysAndNullForWhatIsAbsent) {
  const QString path = writeLibrary(
      {track(QStringLiteral("The B"), QStringLiteral("One"), 10,
             QStringLiteral("<key>Album</key><string>An Album</string>")),
       QStringLiteral(
           "<key>Kind</key><string>MPEG audio file</string><key>Total Time</key><integer>1</integer>")});
  ASSERT_EQ(run(QStringLiteral("library tracks --json --library ") + path), 0) << err;
  EXPECT_EQ(out,
            "{\"Persistent ID\": \"0000000000000002\", \"simplifiedArtist\": null, \"simplifiedAlbum\": "
            "null, \"Path\": null}\n"
            "{\"Persistent ID\": \"0000000000000001\", \"simplifiedArtist\": \"b\", \"simplifiedAlbum\": "
            "\"album\", \"Path\": \"" +
                folder(QStringLiteral("music/1.mp3")).toStdString() + "\"}\n");
}

TEST_F(LibraryCommandsTest, PlistShowsTheTreeAndWhatWasWrongWithIt) {
  const QString path = writeFile(QStringLiteral("a.plist"),
                                 "<plist version=\"1.0\"><dict><key>n</key><integer>5000000000</integer>"
                                 "<key>d</key><date>2008-02-29T12:00:00Z</date></dict></plist>");
  ASSERT_EQ(run(QStringLiteral("inspect plist --json ") + path), 0) << err;
  EXPECT_EQ(out,
            "{\"root\": {\"n\": 5000000000, \"d\": \"2008-02-29T12:00:00Z\"}, \"error\": null, \"values\": "
            "0, \"undecodable\": 0, \"parser\": \"system\"}\n");
  ASSERT_EQ(run(QStringLiteral("inspect plist --manual --json ") + path), 0) << err;
  EXPECT_EQ(out,
            "{\"root\": {\"n\": 2147483647, \"d\": \"2008-02-29T12:00:00Z\"}, \"error\": null, \"values\": "
            "4, \"undecodable\": 0, \"parser\": \"manual\"}\n");
  const QString bad =
      writeFile(QStringLiteral("b.plist"), "<dict><key>a</key><string>b</string><b\xC3\xA9></dict>");
  EXPECT_EQ(run(QStringLiteral("inspect plist --manual --json ") + bad), 1);
  EXPECT_NE(out.find("\"root\": {\"a\": \"b\"}, \"error\": \""), std::string::npos) << out;
}

TEST_F(LibraryCommandsTest, HelpNamesEveryCommandAndWrongOnesAreWrongUse) {
  EXPECT_EQ(run(QStringLiteral("help")), 0);
  for (const char *name :
       {"\n  scan ", "\n  library info ", "\n  library tracks ", "\n  prefs ", "\n  inspect resources ",
        "\n  inspect plist ", "\n  inspect text ", "\n  help "}) {
    EXPECT_NE(out.find(name), std::string::npos) << name;
  }
  EXPECT_EQ(run(QStringLiteral("help library")), 0);
  EXPECT_NE(out.find("library load"), std::string::npos);
  EXPECT_EQ(out.find("prefs"), std::string::npos) << "only the commands of that word";
  EXPECT_EQ(run(QStringLiteral("scan --help")), 0);
  EXPECT_EQ(out.substr(0, 24), "usage: tallyfenctl scan ");
  for (const char *line : {"", "scna", "library", "library infos", "inspect", "help scna"}) {
    EXPECT_EQ(run(QString::fromUtf8(line)), 2) << line;
    EXPECT_EQ(out, "") << line;
    EXPECT_NE(err.find("usage: tallyfenctl"), std::string::npos) << line;
  }
}
