// Writes the seeds of the targets for MP4 files, MPEG headers and sniffing: song_seeds FOLDER.

#include <QDir>
#include <QFile>

#include "tests/audio/MP4Builder.h"

using namespace mp4;

namespace {

void add(const QString &folder, const char *target, const QByteArray &seed) {
  static int count = 0;
  const QString path = folder + u'/' + QString::fromLatin1(target);
  QDir().mkpath(path);
  QFile file(path + QStringLiteral("/seed%1").arg(count++));
  const bool isWritten = file.open(QIODevice::WriteOnly) && file.write(seed) == seed.size();
  if (!isWritten) qFatal("cannot write %s", qPrintable(file.fileName()));
}

const QByteArray kItems = text("\251nam", "Title") + text("\251ART", "Artist") + text("\251alb", "Album") +
                          text("\251day", "2004-05-01") + text("\251gen", "Jazz") + text("\251lyr", "la") +
                          item("trkn", QByteArray("\0\0\0\3\0\014\0\0", 8), 0) +
                          item("gnre", QByteArray("\0\021", 2), 0) +
                          item("tmpo", QByteArray("\0\170", 2), 21) + item("cpil", QByteArray("\1"), 21) +
                          item("covr", "\x89PNGdata", 13);

QByteArray movie(const QByteArray &behindList, quint32 chunk, const QByteArray &more = {}) {
  return atom("moov", {movieHeader(1000, 60000),
                       track(sampleTable("mp4a", 44100, 128000), chunkOffsets({chunk, chunk + 4}) + more),
                       userData(kItems, behindList)});
}

void addMovies(const QString &folder) {
  const QByteArray audio = atom("mdat", QByteArray("AUDIOaudio")), front = fileType();
  const QByteArray wide = be(1) + "mdat" + be(0) + be(26) + "AUDIOaudio";
  const QByteArray co64 = atom("co64", be(0) + be(1) + be(0) + be(600));
  const auto behind = [&front](const QByteArray &list, const QByteArray &more = {}) {
    return front + movie(list, quint32(front.size() + movie(list, 0, more).size()) + 8, more);
  };
  for (const QByteArray &seed :
       {behind({}) + audio, behind(free(500)) + audio, behind({}) + free(300) + audio,
        behind({}) + audio + free(300), behind({}) + audio + free(9) + audio, behind({}, co64) + audio,
        front + audio + movie(free(20), quint32(front.size()) + 8), front + wide + movie({}, 40),
        front + movie({}, 900) + be(0) + "mdat" + "AUDIO"}) {
    add(folder, "mp4", seed);
    add(folder, "mp4write", QByteArray("\x20\1", 2) + seed);
    add(folder, "mp4write", QByteArray("\5\x32", 2) + seed);
    add(folder, "sniff", "\2" + seed);
  }
}

void addFrames(const QString &folder) {
  const QByteArray xing = QByteArray(32, '\0') + "Xing" + be(1) + be(1000);
  const QByteArray headers[] = {"\xFF\xFB\x90\x44", "\xFF\xFB\x92\xC4", "\xFF\xF3\x40\xC4",
                                "\xFF\xFF\x44\x04", "\xFF\xE3\x18\xC4", "\xFF\xFD\xA4\x44"};
  for (const QByteArray &header : headers) {
    const QByteArray frame = header + QByteArray(413, 'x');
    add(folder, "mpegheader", be(0) + frame);
    add(folder, "mpegheader", QByteArray("\0\1\0\0", 4) + header + xing + QByteArray(300, 'x'));
    add(folder, "sniff", "\7" + frame);
    add(folder, "sniff", "\7" + QByteArray("ID3\3\0\0\0\0\0\x20", 10) + QByteArray(32, '\0') + frame);
  }
}

}  // namespace

int main(int count, char **arguments) {
  if (count != 2) return 2;
  addMovies(QString::fromLocal8Bit(arguments[1]));
  addFrames(QString::fromLocal8Bit(arguments[1]));
  return 0;
}
