#pragma once

#include <vector>

#include "scanners/DuplicateSettings.h"
#include "scanners/DurationBuckets.h"
#include "scanners/TrackKeys.h"

/// Finds the tracks that agree with a seed in all that is compared, without a look at the others. One thread.
class CandidateIndex {
 public:
  /// Refers to its arguments; they must outlive it.
  CandidateIndex(const TrackKeys &trackKeys, const DuplicateSettings &inForce);

  /// True if the track may begin a group and another track, earlier or later, agrees with it. Cheap.
  bool hasCompany(quint32 seed) const;
  /// The later tracks that agree with the seed and are in no group, rising. Valid until the next call.
  const std::vector<quint32> &laterCandidates(quint32 seed);

  /// Notes that a track belongs to the group of an earlier one.
  void take(quint32 track) { taken[track] = true; }
  bool isTaken(quint32 track) const { return taken[track]; }

 private:
  std::span<const DurationBuckets::Entry> windowOf(quint32 seed) const;

  const TrackKeys &keys;
  const DuplicateSettings &settings;
  DurationBuckets buckets;
  std::vector<bool> taken;
  std::vector<quint32> found;
};
