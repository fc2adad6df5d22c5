#pragma once

#include <functional>
#include <vector>

#include "scanners/DuplicateSettings.h"
#include "scanners/DurationBuckets.h"

/// Tells whether any earlier track of a bucket was a seed with a given track in its window. One thread.
class EarlierSeeds {
 public:
  /// Whether a track has been a seed that compared itself with later ones; asked only of tracks before the
  /// one in hand, and the answer stays.
  using WasSeed = std::function<bool(quint32 track)>;

  EarlierSeeds(const std::vector<quint32> &bucketOf, const std::vector<float> &seconds,
               const DuplicateSettings &settings, WasSeed wasSeed);

  /// Tracks must be asked about in rising order.
  bool anyBefore(quint32 track);

 private:
  using Entries = std::span<const DurationBuckets::Entry>;
  bool anyBefore(quint32 track, Entries sameDuration);

  const std::vector<quint32> &bucketOf;
  const std::vector<float> &seconds;
  const DuplicateSettings &settings;
  WasSeed wasSeed;
  DurationBuckets buckets;
  /// For the first entry of each run of equal durations: how many of the run are known to have been no seed.
  std::vector<quint32> passed;
};
