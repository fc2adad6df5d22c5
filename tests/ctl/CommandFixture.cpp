#include "tests/ctl/CommandFixture.h"

#include "app/library/LibraryFile.h"
#include "app/library/LibraryLocation.h"
#include "tests/fixtures/LibraryText.h"

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
  QByteArray entries;
  for (qsizetype i = 0; i < tracks.size(); ++i) {
    const QByteArray number = QByteArray::number(i + 1);
    const QString file = writeFile(QStringLiteral("music/%1.mp3").arg(i + 1), "audio");
    entries += "<key>" + number + "</key><dict>" +
               libraryText::text("Persistent ID", number.rightJustified(16, '0')) +
               QString(tracks[i]).replace(QStringLiteral("FILE"), file).toUtf8() + "</dict>\n";
  }
  return writeFile(path,
                   libraryText::library(entries, "<dict>" + libraryText::text("Name", "P") + "</dict>"));
}

QString CommandFixture::track(const QString &artist, const QString &name, int seconds, const QString &more) {
  const QByteArray texts =
      libraryText::text("Artist", artist.toUtf8()) + libraryText::text("Name", name.toUtf8()) +
      libraryText::text("Kind", "MPEG audio file") + libraryText::text("Location", "file://FILE");
  return QString::fromUtf8(texts) +
         QStringLiteral(
             "<key>Total Time</key><integer>%1</integer><key>Size</key><integer>5000000000</integer>"
             "<key>Bit Rate</key><integer>192</integer>%2")
             .arg(seconds * 1000)
             .arg(more);
}
