#include "tests/scanners/PlainNameScan.h"

#include "support/Copy.h"
#include "values/Keys.h"

namespace {

/// A text, or nothing for all that is none.
Value textIn(const Dictionary &track, Key key) {
  return track.value(key).isText() ? track.value(key) : Value();
}

/// The copy that the scan works on: all of it can be changed.
Array changeableCopy(const Array &tracks) {
  const Array copy = Array::make();
  for (const Value &track : copyDeep(tracks)) {
    copy.append(track.toDictionary().isNull() ? track : Value(track.toDictionary().copyMembers(true)));
  }
  return copy;
}

}  // namespace

struct PlainNameScan::Seed {
  Dictionary track;
  Value key, artist, album;
  bool isAlbumMatched;
  Value albumKey = {};
  std::vector<Dictionary> artistSongs = {}, albumSongs = {};
  bool artistDiffers = false, albumDiffers = false;
};

bool PlainNameScan::isAlbumArtistOther(const Seed &seed, const Dictionary &candidate) {
  if (!textIn(candidate, method.albumArtistKey).isNull()) return false;
  const Value albumArtist = textIn(candidate, keys::AlbumArtist);
  if (albumArtist.isNull()) return false;
  const Value key = method.keyOf(albumArtist.toText());
  candidate.set(method.albumArtistKey, key);
  return isEqual(key, seed.key) && !isEqual(seed.artist, albumArtist);
}

bool PlainNameScan::compareWith(Seed &seed, const Dictionary &candidate) {
  if (candidate.contains(keys::RKIsArtistMatched)) return false;
  Value key = textIn(candidate, method.artistKey);
  const Value artist = textIn(candidate, keys::Artist);
  if (key.isNull() && !artist.isNull()) {
    key = method.keyOf(artist.toText());
    candidate.set(method.artistKey, key);
  }
  if (key.isNull() || !isEqual(key, seed.key)) return false;
  if (seed.artistSongs.empty()) seed.artistSongs.push_back(seed.track);
  seed.artistSongs.push_back(candidate);
  if (!seed.artistDiffers) {
    seed.artistDiffers = !isEqual(seed.artist, artist) || isAlbumArtistOther(seed, candidate);
  }
  if (seed.isAlbumMatched || candidate.contains(keys::RKIsAlbumMatched)) return false;
  const Value album = textIn(candidate, keys::Album);
  if (seed.albumKey.isNull()) seed.albumKey = method.keyOf(seed.album.toText());
  if (seed.albumKey.toText().isEmpty() || album.isNull()) return false;
  if (method.keyOf(album.toText()) != seed.albumKey.toText()) return false;
  if (seed.albumSongs.empty()) seed.albumSongs.push_back(seed.track);
  seed.albumSongs.push_back(candidate);
  if (!seed.albumDiffers) seed.albumDiffers = !isEqual(seed.album, album);
  return true;
}

void PlainNameScan::report(Key mark, const std::vector<Dictionary> &songs) {
  const Dictionary row = Dictionary::make();
  const Array list = Array::make();
  for (const Dictionary &song : songs) {
    song.set(mark, true);
    list.append(song);
  }
  row.set(keys::inconType, mark.text());
  row.set(keys::inconSongs, list);
  choose(row);
  rows.append(row);
}

void PlainNameScan::run() {
  tracks = changeableCopy(tracks);
  const auto count = quint32(tracks.size());
  comparisons += double(float(count) / 1000.0F);
  for (bool cancelled = isCancelled(0, 0); scanned < count && !cancelled; ++scanned) {
    const Dictionary track = tracks.at(scanned).toDictionary();
    const quint32 left = count - scanned - 1;
    try {
      Seed seed{track, textIn(track, method.artistKey), textIn(track, keys::Artist),
                textIn(track, keys::Album), track.value(keys::RKIsAlbumMatched).toBool()};
      if (seed.key.isNull() && !seed.artist.isNull()) seed.key = method.keyOf(seed.artist.toText());
      const bool hasPass = !track.contains(keys::RKIsArtistMatched) && !seed.key.toText().isEmpty();
      for (quint32 other = scanned + 1; hasPass && other < count && !isCancelled(scanned, other); ++other) {
        compareWith(seed, tracks.at(other).toDictionary());
      }
      if (seed.artistDiffers) report(keys::RKIsArtistMatched, seed.artistSongs);
      if (seed.albumDiffers) report(keys::RKIsAlbumMatched, seed.albumSongs);
    } catch (const std::exception &) {
    }
    comparisons += left / 1000.0;
    cancelled = isCancelled(scanned, count);
  }
}
