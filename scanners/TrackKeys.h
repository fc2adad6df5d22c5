#pragma once

#include <QHash>
#include <atomic>
#include <vector>

#include "scanners/DuplicateSettings.h"
#include "values/Value.h"

/// A bucket's number where there is no bucket.
inline constexpr quint32 kNoBucket = 0xFFFFFFFF;

/// What the duplicate scan compares of each track, in vectors beside the tracks: adding keys to the track
/// dictionaries would cost each a storage of its own. Two tracks share a bucket number exactly if they agree
/// in all that the bucket stands for; what is not compared separates nothing.
struct TrackKeys {
  /// Reads the tracks. A set flag ends the reading early, with vectors that must not be used.
  TrackKeys(const Array &tracks, const DuplicateSettings &settings, const std::atomic<bool> &cancelled);

  /// In seconds; all 0 where durations are not compared.
  std::vector<float> seconds;
  /// By kind and size. `kNoBucket` for tracks that can neither begin nor join a group, for lack of a path or
  /// a compared value or for their length.
  std::vector<quint32> byFacts;
  /// By kind, size and artist.
  std::vector<quint32> byArtist;
  /// By kind, size, artist and name; `kNoBucket` also for tracks with nobody near in their `byArtist` bucket.
  std::vector<quint32> byName;
  /// By everything; `asSeed` with the album worked out anew, `asCandidate` with the album's stored key.
  /// `kNoBucket` for tracks that may not begin (join) a group.
  std::vector<quint32> asSeed;
  std::vector<quint32> asCandidate;
};
