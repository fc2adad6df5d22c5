#include "app/library/LibraryPreparation.h"

#include <algorithm>

#include "app/library/DistinctValues.h"
#include "platform/FileAddress.h"
#include "text/Simplified.h"
#include "values/Keys.h"

namespace {

/// One kept track with the numbers of its compared values.
struct Candidate {
  Dictionary track;
  quint32 artist, album;
};

/// Drops what is no song from "Tracks" and answers the rest in the file's order.
std::vector<Dictionary> keptTracks(const Dictionary &library, TrackFilter &filter,
                                   PreparedLibrary &prepared) {
  const Dictionary tracks = library.value(keys::Tracks).toDictionary();
  std::vector<Dictionary> kept;
  kept.reserve(size_t(tracks.size()));
  std::vector<bool> drop;
  drop.reserve(size_t(tracks.size()));
  for (const DictionaryEntry &entry : tracks) {
    const TrackFilter::Verdict verdict = filter.verdictOn(entry.value.toDictionary());
    ++prepared.verdicts[size_t(verdict)];
    drop.push_back(verdict != TrackFilter::Verdict::Kept);
    if (!drop.back()) kept.push_back(entry.value.toDictionary());
  }
  const bool dropsAny = size_t(tracks.size()) != kept.size();
  size_t place = 0;
  if (dropsAny) tracks.removeIf([&](const DictionaryEntry &) { return drop[place++]; });
  return kept;
}

/// The simplified text of each distinct value; null where there is none.
std::vector<Value> simplifiedValues(const DistinctValues &distinct) {
  std::vector<Value> simple;
  simple.reserve(distinct.count());
  for (quint32 number = 0; number < distinct.count(); ++number) {
    simple.push_back(simplifiedValue(distinct.valueOf(number)));
  }
  return simple;
}

/// The path that the load gives a track; empty for none.
QString pathOfTrack(const Dictionary &track, const QString &volumePrefix,
                    const QHash<QString, QString> &overridePaths) {
  const QString &location = track.value(keys::Location).toText();
  if (!location.startsWith(QStringLiteral("file:"))) return {};
  QString path = pathOfFileAddress(location);
  if (path.size() < 2) return {};
  const bool needsVolume = !path.startsWith(QStringLiteral("/Volumes/")) && path[1] != u':';
  if (!volumePrefix.isEmpty() && needsVolume) path.prepend(volumePrefix);
  return overridePaths.isEmpty() ? path : overridePaths.value(path, path);
}

Array sorted(std::vector<Candidate> &candidates, const DistinctValues &artists,
             const DistinctValues &albums) {
  const std::vector<quint32> artistRanks = artists.ranks();
  const std::vector<quint32> albumRanks = albums.ranks();
  for (Candidate &candidate : candidates) {
    candidate.artist = artistRanks[candidate.artist];
    candidate.album = albumRanks[candidate.album];
  }
  std::stable_sort(candidates.begin(), candidates.end(), [](const Candidate &a, const Candidate &b) {
    if (a.artist != b.artist) return a.artist < b.artist;
    if (a.album != b.album) return a.album < b.album;
    return compare(a.track.value(keys::TrackNumber), b.track.value(keys::TrackNumber)) < 0;
  });
  const Array tracks = Array::make();
  tracks.reserve(qsizetype(candidates.size()));
  for (Candidate &candidate : candidates) tracks.append(std::move(candidate.track));
  return tracks;
}

}  // namespace

PreparedLibrary prepareLibrary(const Dictionary &library, TrackFilter &filter,
                               const QHash<QString, QString> &overridePaths, const QString &volumePrefix) {
  PreparedLibrary prepared;
  const std::vector<Dictionary> kept = keptTracks(library, filter, prepared);
  // The tables refer to these copies: a track's own values move when keys are added to it.
  std::vector<std::pair<Value, Value>> names;
  names.reserve(kept.size());
  DistinctValues artists, albums;
  std::vector<Candidate> candidates;
  candidates.reserve(kept.size());
  for (const Dictionary &track : kept) {
    names.emplace_back(track.value(keys::Artist), track.value(keys::Album));
    candidates.push_back({track, artists.numberOf(names.back().first), albums.numberOf(names.back().second)});
  }
  const std::vector<Value> simpleArtists = simplifiedValues(artists);
  const std::vector<Value> simpleAlbums = simplifiedValues(albums);
  prepared.paths.reserve(kept.size());
  for (const Candidate &candidate : candidates) {
    candidate.track.reserve(candidate.track.size() + 3);
    candidate.track.set(keys::simplifiedArtist, simpleArtists[candidate.artist]);
    candidate.track.set(keys::simplifiedAlbum, simpleAlbums[candidate.album]);
    const QString path = pathOfTrack(candidate.track, volumePrefix, overridePaths);
    if (path.isEmpty()) continue;
    prepared.paths.push_back(path);
    candidate.track.set(keys::Path, path);
  }
  prepared.sortedTracks = sorted(candidates, artists, albums);
  return prepared;
}
