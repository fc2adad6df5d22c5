#include "tools/demo/LargeLibrary.h"

#include <QDir>

#include "tools/demo/Catalogue.h"
#include "tools/demo/DemoPlaylists.h"
#include "tools/demo/Random.h"
#include "values/Keys.h"

namespace {

constexpr int kFirstID = 1001;
constexpr int kAlbumSongs = 12;
constexpr int kArtistSongs = 40;

// Names from syllables: thousands of them that look like words and differ from each other.
class NameMaker {
 public:
  explicit NameMaker(Random &numbers) : random(numbers) {}

  QString word() {
    static constexpr const char *kHeads[] = {"Bra", "Cor", "Del", "Fen", "Gal", "Hol",  "Jun",
                                             "Kel", "Lor", "Mar", "Nor", "Pel", "Quin", "Ras",
                                             "Sol", "Tam", "Ul",  "Ver", "Wil", "Zan"};
    static constexpr const char *kTails[] = {"a",   "den", "er",   "field", "ia",   "ley", "mont",
                                             "ner", "o",   "ric",  "son",   "stad", "ter", "ton",
                                             "una", "vik", "wood", "yn",    "dor",  "mere"};
    QString made = QString::fromLatin1(kHeads[random.below(20)]);
    if (random.chance(50)) made += QString::fromLatin1(kHeads[random.below(20)]).toLower();
    return made + QString::fromLatin1(kTails[random.below(20)]);
  }

  QString words(int low, int high) {
    QString made = random.chance(15) ? QStringLiteral("The ") + word() : word();
    for (int more = random.between(low, high) - 1; more > 0; --more) made += u' ' + word();
    if (!random.chance(5)) return made;
    static constexpr char16_t kMarked[] = u"áèïôüçñåøЖдя夜空";
    made.insert(made.size() / 2, QChar(kMarked[random.below(int(std::size(kMarked)) - 1)]));
    return made;
  }

 private:
  Random &random;
};

class LargeLibrary {
 public:
  LargeLibrary(int count, quint64 seed) : tracks(count), random(seed), names(random) {}

  /// The next entry: a new song, or now and then a copy of one of the last thousand.
  DemoTrack next() {
    DemoTrack track = !recent.empty() && random.chance(3) ? copyOfRecent() : newSong();
    track.trackID = kFirstID + made;
    track.persistentID = random.next();
    track.dateAdded = Date::fromCivil(2005, 1, 1, 0, 0, random.below(200000000));
    track.dateModified = Date{track.dateAdded.seconds + random.below(90000000)};
    track.playCount = random.chance(60) ? random.between(1, 90) : 0;
    track.played = Date{track.dateModified.seconds + random.below(9000000)};
    track.skipCount = random.chance(15) ? 1 : 0;
    track.rating = random.chance(35) ? 20 * random.between(1, 5) : 0;
    ++made;
    return track;
  }

  int copies() const { return copied; }
  bool isDone() const { return made == tracks; }

 private:
  DemoTrack newSong() {
    if (made % kArtistSongs == 0) artist = names.words(1, 3);
    if (made % kAlbumSongs == 0) beginAlbum();
    DemoTrack track;
    track.tags = albumTags;
    track.tags.artist = artist;
    track.tags.albumArtist = artist;
    track.tags.name = names.words(1, 4);
    track.tags.track = made % kAlbumSongs + 1;
    if (random.chance(30)) track.tags.composer = names.words(2, 2);
    if (random.chance(10)) track.tags.comments = names.words(3, 8);
    track.milliseconds = random.between(90000, 420000);
    track.artworkCount = made / kAlbumSongs % 2;
    const bool m4a = made / kAlbumSongs % 3 == 0;
    track.bitRate = m4a ? 256 : 128 + 64 * random.below(4);
    track.kind = m4a ? QStringLiteral("AAC audio file") : QStringLiteral("MPEG audio file");
    track.sizeBytes = qint64(track.milliseconds) * track.bitRate / 8;
    track.path = artist + u'/' + albumTags.album + u'/' +
                 QStringLiteral("%1 ").arg(track.tags.track, 2, 10, QChar(u'0')) + track.tags.name +
                 (m4a ? QStringLiteral(".m4a") : QStringLiteral(".mp3"));
    remember(track);
    return track;
  }

  void beginAlbum() {
    albumTags = {};
    albumTags.album = names.words(1, 4);
    albumTags.genre = catalogue::genre(random.below(6));
    albumTags.year = random.between(1955, 2012);
    albumTags.trackCount = kAlbumSongs;
    albumTags.disc = albumTags.discCount = 1;
  }

  void remember(const DemoTrack &track) {
    if (recent.size() < 1000) {
      recent.push_back(track);
    } else {
      recent[size_t(made) % recent.size()] = track;
    }
  }

  DemoTrack copyOfRecent() {
    DemoTrack copy = recent[size_t(random.below(int(recent.size())))];
    copy.milliseconds += random.between(-2000, 2000);
    copy.bitRate = 128;
    copy.sizeBytes = qint64(copy.milliseconds) * copy.bitRate / 8;
    copy.path.insert(copy.path.size() - 4, QStringLiteral(" 1"));
    if (random.chance(30)) copy.tags.name = copy.tags.name.toUpper();
    ++copied;
    return copy;
  }

  int tracks, made = 0, copied = 0;
  Random random;
  NameMaker names;
  QString artist;
  SongTags albumTags;
  std::vector<DemoTrack> recent;
};

}  // namespace

DemoSummary makeLargeLibrary(const QString &home, int tracks, quint64 seed) {
  DemoSummary summary;
  summary.libraryFile = libraryFileOf(home);
  summary.tracks = tracks;
  QFile file(summary.libraryFile);
  if (!QDir().mkpath(libraryFolderOf(home)) || !file.open(QIODevice::WriteOnly)) {
    summary.error = QStringLiteral("%1: %2").arg(summary.libraryFile, file.errorString());
    return summary;
  }
  LibraryXml xml(file);
  LargeLibrary library(tracks, seed);
  const QString musicFolder = mediaFolderOf(home) + QStringLiteral("/Music");
  writeLibraryHead(xml, mediaFolderOf(home), 0x7a11ef1000000000u + seed);
  xml.beginDictionary(keys::Tracks);
  while (!library.isDone()) writeTrack(xml, library.next(), musicFolder);
  xml.end();
  writeMasterPlaylist(xml, kFirstID, tracks);
  if (!xml.finish()) summary.error = QStringLiteral("%1: %2").arg(summary.libraryFile, file.errorString());
  summary.playlists = 1;
  summary.duplicateRows = library.copies();
  return summary;
}
