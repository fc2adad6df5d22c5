#include "scanners/InconsistentNameFinder.h"

#include <optional>

#include "values/Keys.h"

namespace {

constexpr quint32 kNoTrack = 0xFFFFFFFF;
/// How many tracks are read between two looks at whether to stop.
constexpr quint32 kStopInterval = 1024;

/// Texts by content, everything else as absent.
bool sameText(const Value &a, const Value &b) {
  return a.isText() == b.isText() && a.toText() == b.toText();
}

}  // namespace

/// One seed's comparison with the later tracks of its artist key, and the tracks found.
struct InconsistentNameFinder::Pass {
  Pass(quint32 track, bool isCandidate) : seed(track), wasCandidate(isCandidate) {}

  const quint32 seed;
  /// An earlier seed has been compared with this one.
  const bool wasCandidate;
  /// The seed's album key, once it was asked for.
  std::optional<quint32> albumId;
  std::vector<quint32> artistSongs, albumSongs;
  bool artistDiffers = false, albumDiffers = false;
};

InconsistentNameFinder::InconsistentNameFinder(const Array &allTracks, const NameKeyMethod &keyMethod,
                                               Stop stopTest)
    : tracks(allTracks.isMutable() ? allTracks : allTracks.copyMembers(true)),
      method(keyMethod),
      stop(std::move(stopTest)),
      keys(keyMethod.keyOf) {
  const auto count = quint32(tracks.size());
  artistIds.resize(count);
  nextOfArtist.assign(count, kNoTrack);
  nextOfAlbum.assign(count, kNoTrack);
  for (auto *marks : {&isArtistMatched, &isAlbumMatched, &isAlbumArtistKeyed}) marks->resize(count);
  std::vector<quint32> lastOfArtist;
  for (quint32 index = 0; index < count; ++index) {
    if (index % kStopInterval == 0 && stop(index)) return;
    const Dictionary &track = trackAt(index);
    isArtistMatched[index] = track.contains(keys::RKIsArtistMatched);
    isAlbumMatched[index] = track.contains(keys::RKIsAlbumMatched);
    const quint32 id = isArtistMatched[index] ? 0 : artistIdOf(track);
    artistIds[index] = id;
    lastOfArtist.resize(keys.count(), kNoTrack);
    if (id != 0 && lastOfArtist[id] != kNoTrack) nextOfArtist[lastOfArtist[id]] = index;
    lastOfArtist[id] = index;
  }
  progress.assign(keys.count(), Progress::Fresh);
}

quint32 InconsistentNameFinder::artistIdOf(const Dictionary &track) {
  const Value &key = track.value(method.artistKey);
  if (key.isText()) return keys.ofKey(key.toText());
  return keys.ofName(track.value(keys::Artist).toText());
}

quint32 InconsistentNameFinder::albumIdOf(quint32 track) {
  return keys.ofName(trackAt(track).value(keys::Album).toText());
}

std::vector<Dictionary> InconsistentNameFinder::rowsOf(quint32 seed) {
  const quint32 artist = artistIds[seed];
  if (artist == 0 || isArtistMatched[seed]) return {};
  Pass pass(seed, hadPass);
  hadPass = true;
  if (progress[artist] == Progress::Fresh) {
    compareAll(pass);
  } else {
    if (progress[artist] == Progress::OneSpelling) linkAlbums(seed);
    compareLinkedAlbums(pass);
  }
  std::vector<Dictionary> rows;
  if (pass.artistDiffers) rows.push_back(rowOf(pass, keys::RKIsArtistMatched, pass.artistSongs));
  if (pass.albumDiffers) rows.push_back(rowOf(pass, keys::RKIsAlbumMatched, pass.albumSongs));
  return rows;
}

// Had one of the later tracks another spelling, all would be matched now and begin nothing. So the first
// complete pass over an artist settles it: what is left are its albums.
void InconsistentNameFinder::compareAll(Pass &pass) {
  for (quint32 other = nextOfArtist[pass.seed]; other != kNoTrack; other = nextOfArtist[other]) {
    if (stop(other)) return;
    pass.artistSongs.push_back(other);
    if (!pass.artistDiffers) pass.artistDiffers = differsInArtist(pass.seed, other);
    compareAlbum(pass, other);
  }
  progress[artistIds[pass.seed]] = Progress::OneSpelling;
}

bool InconsistentNameFinder::differsInArtist(quint32 seed, quint32 candidate) {
  const Dictionary &track = trackAt(candidate);
  const Value &artist = trackAt(seed).value(keys::Artist);
  if (!sameText(artist, track.value(keys::Artist))) return true;
  if (isAlbumArtistKeyed[candidate] || track.value(method.albumArtistKey).isText()) return false;
  const Value &albumArtist = track.value(keys::AlbumArtist);
  if (!albumArtist.isText()) return false;
  const bool differs = !sameText(artist, albumArtist) && keys.ofName(albumArtist.toText()) == artistIds[seed];
  isAlbumArtistKeyed[candidate] = true;
  return differs;
}

void InconsistentNameFinder::compareAlbum(Pass &pass, quint32 candidate) {
  if (isAlbumMatched[pass.seed] || isAlbumMatched[candidate]) return;
  if (!pass.albumId) pass.albumId = albumIdOf(pass.seed);
  if (*pass.albumId == 0 || albumIdOf(candidate) != *pass.albumId) return;
  addToAlbum(pass, candidate);
}

void InconsistentNameFinder::addToAlbum(Pass &pass, quint32 candidate) {
  pass.albumSongs.push_back(candidate);
  pass.albumDiffers = pass.albumDiffers ||
                      !sameText(trackAt(pass.seed).value(keys::Album), trackAt(candidate).value(keys::Album));
}

void InconsistentNameFinder::linkAlbums(quint32 seed) {
  QHash<quint32, quint32> lastOfAlbum;
  for (quint32 track = seed; track != kNoTrack; track = nextOfArtist[track]) {
    if (track != seed && stop(track)) return;
    const quint32 id = isAlbumMatched[track] ? 0 : albumIdOf(track);
    if (id == 0) continue;
    const auto last = lastOfAlbum.find(id);
    if (last == lastOfAlbum.end()) {
      lastOfAlbum.insert(id, track);
    } else {
      nextOfAlbum[*last] = track;
      *last = track;
    }
  }
  progress[artistIds[seed]] = Progress::AlbumsLinked;
}

// As with artists, the first complete pass over an album settles it: where no spelling differed the others
// need not look at each other again, where one did they are all matched.
void InconsistentNameFinder::compareLinkedAlbums(Pass &pass) {
  for (quint32 other = nextOfAlbum[pass.seed]; other != kNoTrack; other = nextOfAlbum[other]) {
    if (stop(other)) return;
    addToAlbum(pass, other);
  }
  nextOfAlbum[pass.seed] = kNoTrack;
  for (const quint32 other : pass.albumSongs) nextOfAlbum[other] = kNoTrack;
}

Dictionary InconsistentNameFinder::rowOf(const Pass &pass, Key mark, const std::vector<quint32> &others) {
  std::vector<bool> &isMatched = mark == keys::RKIsArtistMatched ? isArtistMatched : isAlbumMatched;
  const Array songs = Array::make();
  songs.reserve(qsizetype(others.size()) + 1);
  songs.append(reportedSong(pass.seed, mark, pass.wasCandidate));
  isMatched[pass.seed] = true;
  for (const quint32 other : others) {
    songs.append(reportedSong(other, mark, true));
    isMatched[other] = true;
  }
  const Dictionary row = Dictionary::make();
  row.set(keys::inconType, mark.text());
  row.set(keys::inconSongs, songs);
  return row;
}

Dictionary InconsistentNameFinder::reportedSong(quint32 track, Key mark, bool wasCandidate) {
  Dictionary song = trackAt(track);
  if (!song.isMutable()) {
    song = song.copyMembers(true);
    tracks.set(track, song);
  }
  song.reserve(song.size() + 4);
  if (wasCandidate && !song.value(method.artistKey).isText()) {
    song.set(method.artistKey, keys.text(artistIds[track]));
  }
  if (isAlbumArtistKeyed[track]) {
    song.set(method.albumArtistKey, keys.text(keys.ofName(song.value(keys::AlbumArtist).toText())));
  }
  song.set(mark, true);
  return song;
}
