#pragma once

#include <QtGlobal>
#include <span>
#include <vector>

/// Tracks by bucket, in each bucket by duration, equal durations in the tracks' order: all tracks of a bucket
/// with durations in a window stand next to each other.
class DurationBuckets {
 public:
  struct Entry {
    float seconds;
    quint32 track;
  };

  /// `bucketOf` and `seconds` are by track; a track in `kNoBucket` is left out. Bucket numbers are dense.
  DurationBuckets(const std::vector<quint32> &bucketOf, const std::vector<float> &seconds);

  quint32 count() const { return quint32(starts.size() - 1); }
  /// Empty for a number that no track has.
  std::span<const Entry> bucket(quint32 number) const;
  /// The entries of a bucket from one duration to another, both included.
  std::span<const Entry> window(quint32 number, float begin, float end) const;
  /// Where an entry stands among all.
  size_t placeOf(const Entry &entry) const { return size_t(&entry - entries.data()); }
  size_t size() const { return entries.size(); }

 private:
  std::vector<Entry> entries;
  /// Where each bucket begins, and at the end where the last one ends.
  std::vector<quint32> starts;
};
