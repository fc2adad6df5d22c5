#include "scanners/DurationBuckets.h"

#include <algorithm>
#include <tuple>

#include "scanners/TrackKeys.h"

DurationBuckets::DurationBuckets(const std::vector<quint32> &bucketOf, const std::vector<float> &seconds) {
  quint32 buckets = 0;
  for (const quint32 number : bucketOf)
    buckets = number == kNoBucket ? buckets : std::max(buckets, number + 1);
  starts.assign(size_t(buckets) + 1, 0);
  for (const quint32 number : bucketOf) {
    if (number != kNoBucket) ++starts[number + 1];
  }
  for (size_t number = 1; number < starts.size(); ++number) starts[number] += starts[number - 1];
  entries.resize(starts.back());
  std::vector<quint32> ends = starts;
  for (quint32 track = 0; track < bucketOf.size(); ++track) {
    if (bucketOf[track] != kNoBucket) entries[ends[bucketOf[track]]++] = {seconds[track], track};
  }
  const auto inOrder = [](const Entry &a, const Entry &b) {
    return std::tie(a.seconds, a.track) < std::tie(b.seconds, b.track);
  };
  for (size_t number = 0; number < buckets; ++number) {
    std::sort(entries.begin() + starts[number], entries.begin() + starts[number + 1], inOrder);
  }
}

std::span<const DurationBuckets::Entry> DurationBuckets::bucket(quint32 number) const {
  if (number >= count()) return {};
  return std::span(entries).subspan(starts[number], starts[number + 1] - starts[number]);
}

std::span<const DurationBuckets::Entry> DurationBuckets::window(quint32 number, float begin,
                                                                float end) const {
  const std::span<const Entry> all = bucket(number);
  const auto first = std::lower_bound(all.begin(), all.end(), begin,
                                      [](const Entry &entry, float limit) { return entry.seconds < limit; });
  const auto last = std::upper_bound(first, all.end(), end,
                                     [](float limit, const Entry &entry) { return limit < entry.seconds; });
  return {first, last};
}
