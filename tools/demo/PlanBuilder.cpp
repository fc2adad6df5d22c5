#include "tools/demo/PlanBuilder.h"

#include "tools/demo/Catalogue.h"
#include "tools/demo/Picture.h"

namespace {

// Rates that keep the files of silence small.
constexpr int kSmallRates[] = {32, 40, 48, 56};
constexpr int kStep = 7;

/// Makes an MP3 file large enough to be taken for a song and no fragment of one.
void makeWeighty(DemoTrack &song) {
  constexpr int kLongEnough = 4000;
  if (song.isM4a()) return;
  song.bitRate = 256;
  song.milliseconds = qMax(song.milliseconds, kLongEnough);
}

QString pathPart(QString name) {
  name.replace(u'/', u'_').replace(u':', u'_');
  if (name.startsWith(u'.')) name[0] = u'_';
  return name;
}

}  // namespace

QString songPath(const SongTags &tags, const QString &suffix, bool m4a) {
  const QString number =
      tags.track == 0 ? QString() : QStringLiteral("%1 ").arg(tags.track, 2, 10, QChar(u'0'));
  const QString artist = tags.compilation ? QStringLiteral("Compilations") : tags.artist;
  return pathPart(artist) + u'/' + pathPart(tags.album) + u'/' + number + pathPart(tags.name) + suffix +
         (m4a ? QStringLiteral(".m4a") : QStringLiteral(".mp3"));
}

DemoTrack PlanBuilder::makeSong(int songIndex) {
  using namespace catalogue;
  const int albumNumber = songIndex / kSongsOfAlbum % (kArtistCount * kAlbumsOfArtist);
  const int artistIndex = albumNumber / kAlbumsOfArtist;
  DemoTrack song;
  song.tags.name = title(songIndex);
  song.tags.artist = artist(artistIndex);
  song.tags.album = album(artistIndex, albumNumber % kAlbumsOfArtist);
  song.tags.genre = genre(artistIndex);
  song.tags.year = 1962 + (albumNumber * 5) % 50;
  song.tags.track = songIndex % kSongsOfAlbum + 1;
  song.tags.trackCount = kSongsOfAlbum;
  song.tags.disc = song.tags.discCount = 1;
  if (albumNumber % 4 == 1) song.tags.composer = artist((artistIndex + 3) % kArtistCount);
  if (albumNumber % 2 == 0) {
    song.tags.artwork = makeCover(32, quint32(albumNumber * 0x0b1d37) & 0xffffff, 0xf0e0c0);
  }
  const bool m4a = albumNumber % 3 == 2;
  song.path = songPath(song.tags, {}, m4a);
  song.kind = m4a ? QStringLiteral("AAC audio file") : QStringLiteral("MPEG audio file");
  if (albumNumber % 9 == 5) song.kind = QStringLiteral("Purchased AAC audio file");
  song.bitRate = m4a ? 256 : kSmallRates[random.below(4)];
  song.milliseconds = random.between(2500, 6000);
  return song;
}

void PlanBuilder::addAlbums() {
  for (int i = 0; i < catalogue::kSongCount; ++i) plan.tracks.push_back(makeSong(i));
}

DemoTrack PlanBuilder::copyOf(const DemoTrack &song, const QString &suffix, bool m4a) {
  DemoTrack copy = song;
  copy.path = songPath(copy.tags, suffix, m4a);
  copy.kind = m4a ? QStringLiteral("AAC audio file") : QStringLiteral("MPEG audio file");
  copy.bitRate = m4a ? 128 : song.isM4a() ? 40 : song.bitRate;
  copy.milliseconds += random.between(-200, 200);
  return copy;
}

void PlanBuilder::addCopy(const DemoTrack &copy) {
  plan.tracks.push_back(copy);
  ++plan.duplicateRows;
}

void PlanBuilder::addDuplicates() {
  constexpr int kGroups = 40;
  constexpr int kOtherRate = 8, kOtherKind = 16, kThreeCopies = 22, kSameAgain = 28;
  for (int group = 0; group < kGroups; ++group) {
    const int index = group * kStep;
    ++plan.duplicateGroups;
    ++plan.duplicateRows;
    if (group >= kSameAgain) {
      const catalogue::Spellings both = catalogue::spellings(group - kSameAgain);
      DemoTrack &first = plan.tracks[size_t(index)];
      first.tags.artist = both.firstArtist;
      first.tags.name = both.firstName;
      first.tags.album = QStringLiteral("Loose Ends");
      first.path = songPath(first.tags, {}, first.isM4a());
      DemoTrack second = first;
      second.tags.artist = both.secondArtist;
      second.tags.name = both.secondName;
      addCopy(copyOf(second, QStringLiteral(" (1)"), false));
      plan.inconsistentArtists += both.firstArtist != both.secondArtist ? 1 : 0;
      continue;
    }
    if (group < kOtherRate) makeWeighty(plan.tracks[size_t(index)]);
    const DemoTrack song = plan.tracks[size_t(index)];
    const bool otherKind = group >= kOtherRate && group < kOtherKind;
    DemoTrack copy = copyOf(song, QStringLiteral(" 1"), otherKind ? !song.isM4a() : song.isM4a());
    if (group < kOtherRate) copy.bitRate = song.isM4a() ? 128 : 320;
    addCopy(copy);
    if (group >= kOtherKind && group < kThreeCopies) {
      DemoTrack third = copyOf(song, QStringLiteral(" 2"), false);
      third.tags.album = QStringLiteral("Best Of Everything");
      third.tags.compilation = true;
      third.path = songPath(third.tags, {}, false);
      addCopy(third);
    }
  }
}

void PlanBuilder::addLookalikes() {
  for (int i = 0; i < 18; ++i) {
    const DemoTrack song = plan.tracks[size_t(i * 2 * kStep + 5)];
    DemoTrack other = song;
    if (i % 3 == 0) {
      other.tags.name += u" (Fennimore Remix)";
    } else if (i % 3 == 1) {
      other.tags.album = QStringLiteral("Live in an Empty Hall");
      other.milliseconds += random.between(14000, 22000);
    } else {
      other.tags.artist = catalogue::artist(i == 2 ? 3 : 2);
      other.tags.album = QStringLiteral("Songs of Others");
    }
    other.tags.track = i + 1;
    other.tags.trackCount = 18;
    plan.tracks.push_back(copyOf(other, {}, i % 3 == 1));
  }
  for (int i = 0; i < 2; ++i) {
    DemoTrack gone = copyOf(plan.tracks[size_t(i * kStep + 4)], QStringLiteral(" 1"), false);
    gone.fileIsGone = true;
    plan.tracks.push_back(gone);
    ++plan.missingTracks;
  }
}

void PlanBuilder::addMisspellings() {
  for (int i = 0; i < catalogue::kMisspellingCount; ++i) {
    const catalogue::Misspelling wrong = catalogue::misspelling(i);
    DemoTrack song = makeSong(catalogue::kSongCount + i);
    song.tags.artist = wrong.artist;
    song.tags.album = wrong.album;
    song.tags.track = 8;
    song.path = songPath(song.tags, {}, song.isM4a());
    plan.tracks.push_back(song);
    plan.inconsistentArtists += wrong.isSameArtist ? 1 : 0;
  }
}

void PlanBuilder::addNameVariants() {
  // Behind the titles of the songs that have no entry.
  constexpr int kFirstTitle = catalogue::kSongCount + 70;
  for (int i = 0; i < catalogue::kNameVariantCount; ++i) {
    const catalogue::NameVariant variant = catalogue::nameVariant(i);
    DemoTrack song = makeSong(kFirstTitle + i);
    song.tags.artist = variant.artist;
    song.tags.albumArtist = variant.albumArtist;
    song.tags.album = variant.album;
    // Behind the songs of the album that it belongs to.
    song.tags.track = song.tags.trackCount = 8;
    song.path = songPath(song.tags, {}, song.isM4a());
    plan.tracks.push_back(song);
    plan.inconsistentArtists += variant.makesArtist ? 1 : 0;
    plan.inconsistentAlbums += variant.makesAlbum ? 1 : 0;
  }
}

void PlanBuilder::addMissing() {
  for (int i = 0; i < 10; ++i) {
    DemoTrack &song = plan.tracks[size_t(i * 3 * kStep + 3)];
    song.fileIsGone = true;
    ++plan.missingTracks;
    if (i % 3 != 0) continue;
    DemoTrack moved = song;
    moved.fileIsGone = false;
    moved.path = QStringLiteral("Moved/") + song.path.section(u'/', -1);
    addOrphan(moved);
  }
}

void PlanBuilder::addOrphan(const DemoTrack &song) {
  plan.orphans.push_back(song);
}

void PlanBuilder::addOrphans() {
  for (int i = 0; i < 8; ++i) {
    DemoTrack song = makeSong(catalogue::kSongCount + catalogue::kMisspellingCount + i * kStep);
    song.tags.track = 9;
    song.path = songPath(song.tags, {}, song.isM4a());
    addOrphan(song);
  }
}

void PlanBuilder::addNonSong(const QString &name, const QString &kind, const QString &path) {
  DemoTrack entry;
  entry.tags.name = name;
  entry.tags.artist = catalogue::artist(0);
  entry.tags.album = catalogue::album(0, 0);
  entry.kind = kind;
  entry.path = path;
  plan.tracks.push_back(entry);
  ++plan.droppedTracks;
}

void PlanBuilder::addNonSongs() {
  const QString folder = catalogue::artist(0) + u'/' + catalogue::album(0, 0) + u'/';
  addNonSong(QStringLiteral("On the Pier"), QStringLiteral("Purchased MPEG-4 video file"), {});
  plan.tracks.back().hasVideo = true;
  plan.tracks.back().trackType = QStringLiteral("Remote");
  plan.tracks.back().milliseconds = 201000;
  addNonSong(QStringLiteral("Lantern Talk, Episode 12"), QStringLiteral("MPEG audio stream"), {});
  plan.tracks.back().isPodcast = true;
  plan.tracks.back().trackType = QStringLiteral("URL");
  plan.tracks.back().milliseconds = 1805000;
  plan.tracks.back().url = QStringLiteral("http://podcast.example.org/lantern/12.mp3");
  addNonSong(QStringLiteral("Booklet"), QStringLiteral("PDF document"),
             folder + QStringLiteral("Booklet.pdf"));
  addNonSong(QStringLiteral("Pier Bell"), QStringLiteral("Ringtone"),
             folder + QStringLiteral("Pier Bell.m4r"));
  plan.tracks.back().milliseconds = 3000;
  plan.tracks.back().bitRate = 256;
}

void PlanBuilder::addHistory(DemoTrack &track) {
  const Date start = Date::fromCivil(2006, 1, 2, 3, 4, 5);
  track.dateAdded = Date{start.seconds + random.below(5 * 31536000)};
  track.dateModified = Date{track.dateAdded.seconds + random.below(8640000)};
  track.artworkCount = track.tags.artwork.isEmpty() ? 0 : 1;
  if (random.chance(70)) {
    track.playCount = random.between(1, 60);
    track.played = Date{track.dateAdded.seconds + random.below(31536000)};
  }
  if (track.playCount > 3 && random.chance(30)) track.skipCount = random.between(1, 4);
  if (random.chance(40)) track.rating = 20 * random.between(1, 5);
  if (random.chance(20)) track.bpm = random.between(70, 160);
}

DemoPlan PlanBuilder::finish() {
  int trackID = 101;
  for (DemoTrack &track : plan.tracks) {
    track.trackID = trackID++;
    track.persistentID = random.next();
    addHistory(track);
  }
  return std::move(plan);
}
