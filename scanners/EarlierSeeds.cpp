#include "scanners/EarlierSeeds.h"

#include <algorithm>

EarlierSeeds::EarlierSeeds(const std::vector<quint32> &byTrack, const std::vector<float> &durations,
                           const DuplicateSettings &inForce, WasSeed test)
    : bucketOf(byTrack),
      seconds(durations),
      settings(inForce),
      wasSeed(std::move(test)),
      buckets(byTrack, durations),
      passed(buckets.size()) {}

bool EarlierSeeds::anyBefore(quint32 track) {
  const Entries bucket = buckets.bucket(bucketOf[track]);
  const float own = seconds[track];
  const auto bySeconds = [](const DurationBuckets::Entry &a, const DurationBuckets::Entry &b) {
    return a.seconds < b.seconds;
  };
  const auto begin =
      std::lower_bound(bucket.begin(), bucket.end(), DurationBuckets::Entry{own, 0}, bySeconds);
  for (auto run = begin; run != bucket.end() && settings.inWindow(run->seconds, own);) {
    const auto next = std::upper_bound(run, bucket.end(), *run, bySeconds);
    if (anyBefore(track, {run, next})) return true;
    run = next;
  }
  for (auto run = begin; run != bucket.begin() && settings.inWindow((run - 1)->seconds, own);) {
    const auto next = run;
    run = std::lower_bound(bucket.begin(), run, *(run - 1), bySeconds);
    if (anyBefore(track, {run, next})) return true;
  }
  return false;
}

bool EarlierSeeds::anyBefore(quint32 track, Entries sameDuration) {
  quint32 &known = passed[buckets.placeOf(sameDuration.front())];
  while (known < sameDuration.size() && sameDuration[known].track < track) {
    if (wasSeed(sameDuration[known].track)) return true;
    ++known;
  }
  return false;
}
