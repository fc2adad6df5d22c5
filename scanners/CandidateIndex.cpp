#include "scanners/CandidateIndex.h"

#include <algorithm>

CandidateIndex::CandidateIndex(const TrackKeys &trackKeys, const DuplicateSettings &inForce)
    : keys(trackKeys),
      settings(inForce),
      buckets(trackKeys.asCandidate, trackKeys.seconds),
      taken(trackKeys.seconds.size()) {}

std::span<const DurationBuckets::Entry> CandidateIndex::windowOf(quint32 seed) const {
  if (!settings.matchDuration) return buckets.bucket(keys.asSeed[seed]);
  const float seconds = keys.seconds[seed];
  return buckets.window(keys.asSeed[seed], settings.windowBegin(seconds), settings.windowEnd(seconds));
}

bool CandidateIndex::hasCompany(quint32 seed) const {
  if (keys.asSeed[seed] == kNoBucket || taken[seed]) return false;
  const std::span<const DurationBuckets::Entry> window = windowOf(seed);
  return window.size() > 1 || (window.size() == 1 && window.front().track != seed);
}

const std::vector<quint32> &CandidateIndex::laterCandidates(quint32 seed) {
  found.clear();
  for (const DurationBuckets::Entry &entry : windowOf(seed)) {
    if (entry.track > seed && !taken[entry.track]) found.push_back(entry.track);
  }
  if (settings.matchDuration) std::sort(found.begin(), found.end());
  return found;
}
