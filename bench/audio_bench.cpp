// Song files read and written, side by side with TagLib and the system's own walk and copy: the same files in
// a warm cache, alternating, the best of several rounds.
//
//   audio_bench [FILES [WALKED]]      5000 and 100000 by default

#include <attachedpictureframe.h>
#include <fileref.h>
#include <id3v2tag.h>
#include <mp4file.h>
#include <mpegfile.h>
#include <tpropertymap.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>

#include "app/library/FileTreeWalk.h"
#include "audio/SongFile.h"
#include "audio/mp4/AACInfoTag.h"
#include "platform/qt/QtPlatform.h"
#include "tests/audio/MP4Builder.h"
#include "tools/demo/M4aWriter.h"
#include "tools/demo/Mp3Writer.h"
#include "tools/demo/Picture.h"

namespace {

constexpr int kRounds = 5;

/// What stands in the way of the compiler leaving out what is read.
quint64 sum = 0;

double secondsOf(const std::function<void()> &work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// The best times of two works that take turns.
std::pair<double, double> sideBySide(const std::function<void()> &ours, const std::function<void()> &theirs) {
  std::pair<double, double> best{1e9, 1e9};
  for (int round = 0; round < kRounds; ++round) {
    best.first = std::min(best.first, secondsOf(ours));
    best.second = std::min(best.second, secondsOf(theirs));
  }
  return best;
}

void writeBytes(const QString &path, const QByteArray &bytes) {
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) qFatal("cannot write");
}

SongTags tagsOf(int number) {
  SongTags tags;
  tags.name = QStringLiteral("Song number %1").arg(number);
  tags.artist = QStringLiteral("Artist %1").arg(number % 97);
  tags.album = QStringLiteral("Album %1").arg(number % 311);
  tags.genre = QStringLiteral("Jazz");
  tags.year = 1950 + number % 70;
  tags.track = 1 + number % 12;
  tags.trackCount = 12;
  tags.artwork = makeCover(200, quint32(number * 7919) & 0xFFFFFF, quint32(number * 104729) & 0xFFFFFF);
  return tags;
}

void readOurs(const QStringList &paths) {
  for (const QString &path : paths) {
    const SongFilePtr song = SongFile::songWithPath(path);
    const AudioInfoTag *tag = song ? song->infotag() : nullptr;
    if (!tag) qFatal("no tag in %s", qPrintable(path));
    sum += quint64(tag->title().size() + tag->artist().size() + tag->album().size() + tag->genres().size() +
                   tag->track().size() + tag->year().size() + tag->bitrate() + tag->samplerate());
    sum += quint64(tag->duration()) + tag->numberOfArtworkBytes();
  }
}

quint64 picturesOf(TagLib::File *file) {
  quint64 bytes = 0;
  if (auto *mpeg = dynamic_cast<TagLib::MPEG::File *>(file); mpeg && mpeg->ID3v2Tag()) {
    for (const auto *frame : mpeg->ID3v2Tag()->frameList("APIC")) {
      const auto *picture = dynamic_cast<const TagLib::ID3v2::AttachedPictureFrame *>(frame);
      if (picture) bytes += picture->picture().size();
    }
  } else if (auto *mp4 = dynamic_cast<TagLib::MP4::File *>(file)) {
    for (const auto &picture : mp4->tag()->item("covr").toCoverArtList()) bytes += picture.data().size();
  }
  return bytes;
}

void readTheirs(const std::vector<std::string> &paths) {
  for (const std::string &path : paths) {
    const TagLib::FileRef song(path.c_str());
    const TagLib::Tag *tag = song.tag();
    const TagLib::AudioProperties *facts = song.audioProperties();
    if (!tag || !facts) qFatal("TagLib finds no tag in %s", path.c_str());
    sum += tag->title().size() + tag->artist().size() + tag->album().size() + tag->genre().size() +
           tag->track() + tag->year() + unsigned(facts->bitrate() + facts->sampleRate());
    sum += unsigned(facts->lengthInSeconds()) + picturesOf(song.file());
  }
}

void measureReading(const QString &folder, int files) {
  for (const bool isMpeg : {true, false}) {
    QStringList paths;
    std::vector<std::string> names;
    for (int number = 0; number < files / 2; ++number) {
      const QString path = QStringLiteral("%1/%2.%3").arg(folder).arg(number).arg(isMpeg ? u"mp3" : u"m4a");
      const SongTags tags = tagsOf(number);
      writeBytes(path, (isMpeg ? makeMp3(tags, 128, 2000) : makeM4a(tags, 128, 60000)).bytes);
      paths.append(path);
      names.push_back(path.toStdString());
    }
    const auto [ours, theirs] = sideBySide([&paths] { readOurs(paths); }, [&names] { readTheirs(names); });
    std::printf("read %d %s: ours %.0f files/s, TagLib %.0f files/s, ratio %.2f\n", int(paths.size()),
                isMpeg ? "MP3" : "M4A", double(paths.size()) / ours, double(paths.size()) / theirs,
                theirs / ours);
    for (const QString &path : paths) QFile::remove(path);
  }
}

void walkTheirs(const std::string &root) {
  std::vector<std::string> found;
  for (const auto &entry : std::filesystem::recursive_directory_iterator(root)) {
    if (!entry.exists() || entry.is_symlink()) continue;
    found.push_back(entry.path().string().substr(root.size() + 1));
  }
  sum += found.size();
}

void measureWalk(const QString &folder, int files) {
  constexpr int kInFolder = 100;
  const QString root = folder + u"/walked"_qs;
  for (int number = 0; number < files; ++number) {
    const QString album =
        QStringLiteral("%1/Artist %2/Album %3").arg(root).arg(number / 1000).arg(number / kInFolder);
    if (number % kInFolder == 0) {
      QDir().mkpath(album);
      QFile::link(root, album + u"/link"_qs);
    }
    writeBytes(QStringLiteral("%1/%2 Song of the day.mp3").arg(album).arg(number), {});
  }
  const auto [ours, theirs] = sideBySide(
      [&root] {
        const auto found = BMUtility::recursiveFilePathsInDirectoryEnterPackagesMaxCount(root, false, 0);
        sum += quint64(found->size());
      },
      [name = root.toStdString()] { walkTheirs(name); });
  std::printf("walk %d files: ours %.3f s, recursive_directory_iterator %.3f s, ratio %.2f\n", files, ours,
              theirs, theirs / ours);
}

/// Bytes that this process has handed to the system to be written.
qint64 bytesWritten() {
  QFile file(QStringLiteral("/proc/self/io"));
  if (!file.open(QIODevice::ReadOnly)) return 0;
  for (const QByteArray &line : file.readAll().split('\n')) {
    if (line.startsWith("wchar: ")) return line.mid(7).toLongLong();
  }
  return 0;
}

void plainCopy(const QString &from, const QString &to) {
  std::ifstream in(from.toStdString(), std::ios::binary);
  std::ofstream out(to.toStdString(), std::ios::binary | std::ios::trunc);
  std::vector<char> chunk(128 * 1024);
  while (in.read(chunk.data(), std::streamsize(chunk.size())) || in.gcount() > 0) {
    out.write(chunk.data(), in.gcount());
  }
}

void measureWriting(const QString &folder) {
  const QString path = folder + u"/large.mp3"_qs, copy = folder + u"/copy.mp3"_qs;
  writeBytes(path, makeMp3(tagsOf(1), 320, 131000).bytes);
  // A longer title and a shorter one: the audio moves up and down.
  const auto [ours, theirs] = sideBySide(
      [&] {
        for (const int words : {10, 1}) {
          const SongFilePtr song = SongFile::songWithPath(path);
          song->infotag()->setTitle(QStringLiteral("Another title").repeated(words));
          if (!song->writeToOriginalPathWithErrorRefreshiTunes(nullptr, false)) qFatal("not written");
        }
      },
      [&] {
        for (int copies = 0; copies < 2; ++copies) plainCopy(path, copy);
      });
  std::printf("title into an MP3 of %.1f MB: %.2f ms, bare copy %.2f ms, %.2f times\n",
              double(QFile(path).size()) / 1e6, ours * 500, theirs * 500, ours / theirs);
}

void measureFreeRoom(const QString &folder) {
  using namespace mp4;
  const QByteArray movie = atom("moov", {movieHeader(1000, 60000), track({}, chunkOffsets({900})),
                                         userData(text("\251nam", "Title"), free(500))});
  const QString path = folder + u"/room.m4a"_qs;
  writeBytes(path, fileType() + movie + atom("mdat", QByteArray(5000000, 'a')));
  const SongFilePtr song = SongFile::songWithPath(path);
  song->infotag()->setTitle(QStringLiteral("A longer title"));
  const qint64 before = bytesWritten();
  if (!song->writeToOriginalPathWithErrorRefreshiTunes(nullptr, false)) qFatal("not written");
  std::printf("title into an MP4 of 5 MB with room: %lld bytes written\n", bytesWritten() - before);
}

}  // namespace

int main(int count, char **arguments) {
  const QCoreApplication application(count, arguments);
  const QTemporaryDir temporary;
  const QString home = temporary.path();
  BundleInformation bundle;
  bundle.executable = bundle.identifier = QStringLiteral("audio_bench");
  bundle.shortVersion = bundle.version = QStringLiteral("0");
  const QtPlatform services(bundle, {home, home, home, home, home}, home);
  const QStringList given = application.arguments();
  measureReading(home, given.value(1, QStringLiteral("5000")).toInt());
  measureWalk(home, given.value(2, QStringLiteral("100000")).toInt());
  measureWriting(home);
  measureFreeRoom(home);
  return sum == 0 ? 1 : 0;
}
