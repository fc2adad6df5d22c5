#pragma once

#include <functional>
#include <vector>

#include "scanners/NameKeyMethod.h"
#include "scanners/NameKeys.h"
#include "values/Value.h"

/// Finds, for each seed, the later tracks that have its artist, or its artist's album, under another
/// spelling, with the rows, marks and keys that a walk over all pairs would leave. One thread.
class InconsistentNameFinder {
 public:
  /// Whether the scan is to stop before it looks at a track. Once true it stays true for all later tracks.
  using Stop = std::function<bool(quint32 track)>;

  /// Numbers the artists' keys, the long part of a scan; being stopped ends that early, and then no seed may
  /// be asked for. `tracks` must be a list of dictionaries that nobody else refers to: those of rows are
  /// changed.
  InconsistentNameFinder(const Array &tracks, const NameKeyMethod &method, Stop stop);
  InconsistentNameFinder(const InconsistentNameFinder &) = delete;

  /// The rows that a track begins, its artist's before its album's, without a preferred spelling; none if it
  /// begins none. Their tracks are marked. To be asked of all tracks in rising order. When stopped, the rows
  /// of what has been found so far. An exception from the key function passes through.
  std::vector<Dictionary> rowsOf(quint32 seed);

 private:
  struct Pass;
  /// How far the tracks of one artist key are known to agree.
  enum class Progress : unsigned char { Fresh, OneSpelling, AlbumsLinked };

  const Dictionary &trackAt(quint32 index) const { return tracks.at(index).toDictionary(); }
  quint32 artistIdOf(const Dictionary &track);
  quint32 albumIdOf(quint32 track);
  void compareAll(Pass &pass);
  void compareAlbum(Pass &pass, quint32 candidate);
  void addToAlbum(Pass &pass, quint32 candidate);
  bool differsInArtist(quint32 seed, quint32 candidate);
  void linkAlbums(quint32 seed);
  void compareLinkedAlbums(Pass &pass);
  Dictionary rowOf(const Pass &pass, Key mark, const std::vector<quint32> &others);
  Dictionary reportedSong(quint32 track, Key mark, bool wasCandidate);

  const Array tracks;
  const NameKeyMethod method;
  const Stop stop;
  NameKeys keys;
  /// By track; 0 for an absent or empty key, which neither begins nor joins anything.
  std::vector<quint32> artistIds;
  /// By track: the next one of the same artist key, and of the same album key within it; `kNoTrack` at ends.
  std::vector<quint32> nextOfArtist, nextOfAlbum;
  std::vector<bool> isArtistMatched, isAlbumMatched;
  /// By track: the key of its "Album Artist" has been worked out, and counts no more.
  std::vector<bool> isAlbumArtistKeyed;
  /// By artist key.
  std::vector<Progress> progress;
  /// A seed has been compared with all later tracks, so that each of them has been a candidate.
  bool hadPass = false;
};
