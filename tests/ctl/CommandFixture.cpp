#include "tests/ctl/CommandFixture.h"

#include "app/library/LibraryFile.h"
#include "app/library/LibraryLocation.h"

CommandFixture::CommandFixture() {
  iTunesInterface::resetLibraryCache();
  setPreference(QStringLiteral("preferAudioFileBitRate"), 160);
  setPreference(QStringLiteral("allowedDurationVariation"), 10);
}

CommandFixture::~CommandFixture() {
  iTunesInterface::setMusicLibraryXMLPath({});
}

int CommandFixture::run(const QString &line, const std::string &input) {
  std::istringstream in(input);
  std::ostringstream output, errors;
  Terminal terminal{in, output, errors, isTerminal, isAnswering};
  const int code = CommandTable().run(line.split(u' ', Qt::SkipEmptyParts), terminal);
  out = output.str();
  err = errors.str();
  return code;
}

int CommandFixture::scan(const QStringList &arguments, std::function<bool()> interruptWhen) {
  return scanWith<ScanCommand>(arguments, std::move(interruptWhen));
}

int CommandFixture::runScanning(Command &command, const QStringList &arguments) {
  std::istringstream in;
  std::ostringstream output, errors;
  Terminal terminal{in, output, errors, isTerminal};
  const int code = command.run(arguments, terminal);
  out = output.str();
  err = errors.str();
  return code;
}

LoopRunner CommandFixture::virtualLoop(std::function<bool()> interruptWhen) {
  return [this, interruptWhen = std::move(interruptWhen)](const std::function<bool()> &done,
                                                          const std::function<void()> &onInterrupt) mutable {
    const bool ended = time.runUntil([&] {
      if (interruptWhen && interruptWhen()) {
        interruptWhen = {};
        onInterrupt();
      }
      return done();
    });
    EXPECT_TRUE(ended) << "the scan hangs";
  };
}

QString CommandFixture::writeLibrary(const QStringList &tracks, const QString &path) {
  QString xml = QStringLiteral(
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">\n<dict>\n"
      "<key>Music Folder</key><string>file:///music/</string>\n<key>Tracks</key>\n<dict>\n");
  for (qsizetype i = 0; i < tracks.size(); ++i) {
    const QString file = writeFile(QStringLiteral("music/%1.mp3").arg(i + 1), "audio");
    xml += QStringLiteral("<key>%1</key><dict><key>Persistent ID</key><string>%2</string>%3</dict>\n")
               .arg(i + 1)
               .arg(i + 1, 16, 10, QLatin1Char('0'))
               .arg(QString(tracks[i]).replace(QStringLiteral("FILE"), file));
  }
  xml += QStringLiteral(
      "</dict>\n<key>Playlists</key><array><dict><key>Name</key><string>P</string></dict></array>\n"
      "</dict>\n</plist>\n");
  return writeFile(path, xml.toUtf8());
}

QString CommandFixture::track(const QString &artist, const QString &name, int seconds, const QString &more) {
  return QStringLiteral(
             "<key>Artist</key><string>%1</string><key>Name</key><string>%2</string>"
             "<key>Kind</key><string>MPEG audio file</string><key>Total Time</key><integer>%3</integer>"
             "<key>Size</key><integer>5000000000</integer><key>Bit Rate</key><integer>192</integer>"
             "<key>Location</key><string>file://FILE</string>%4")
      .arg(artist, name)
      .arg(seconds * 1000)
      .arg(more);
}
