#include "scanners/TrackKeys.h"

#include <cmath>

#include "scanners/DurationBuckets.h"
#include "scanners/SimplifiedIds.h"
#include "values/Keys.h"

namespace {

/// How many tracks are read between two looks at the cancel flag.
constexpr size_t kCancelInterval = 1024;

/// Divides buckets further: one number for each pair of a bucket and what divides it.
class Division {
 public:
  quint32 of(quint32 bucket, quint32 part) { return pairs.of(quint64(bucket) << 32 | part); }

 private:
  Numbering<quint64> pairs;
};

/// One text for each size that compares differently, whole and real numbers by worth; empty for no size.
QString sizeKey(const Value &size) {
  if (!size.isNumber()) return {};
  const double real = size.toDouble();
  if (size.type() != Value::Type::Real || (std::abs(real) < 9.0e18 && std::trunc(real) == real)) {
    return QString::number(size.toInteger());
  }
  return std::isnan(real) ? QString() : QString::number(real, 'g', 17);
}

/// Has a key, or the text from which one is made.
bool hasKey(const Dictionary &track, Key stored, Key display) {
  return track.value(display).isText() || track.value(stored).isText();
}

class Reader {
 public:
  Reader(TrackKeys &into, const Array &allTracks, const DuplicateSettings &inForce)
      : keys(into), tracks(allTracks), settings(inForce) {}

  void readFacts(size_t index);
  void readName(size_t index);
  void readAlbum(size_t index);

 private:
  const Dictionary &trackAt(size_t index) const { return tracks.at(qsizetype(index)).toDictionary(); }
  bool takesPart(const Dictionary &track, float duration) const;
  quint32 idOf(const Dictionary &track, Key stored, Key display);
  /// The number of an album's key; 0 for an absent or empty one.
  quint32 albumId(const Value &text, bool isKey);

  TrackKeys &keys;
  const Array &tracks;
  const DuplicateSettings &settings;
  SimplifiedIds ids;
  Numbering<QString> exactTexts;
  Division byKind, bySize, byArtist, byName, byAlbum;
};

bool Reader::takesPart(const Dictionary &track, float duration) const {
  if (settings.isLong(duration) || (settings.matchDuration && std::isnan(duration))) return false;
  if (track.value(keys::Path).toText().isEmpty()) return false;
  if (settings.matchKind && !track.value(keys::Kind).isText()) return false;
  if (settings.matchSize && sizeKey(track.value(keys::Size)).isEmpty()) return false;
  if (settings.matchArtist && !hasKey(track, keys::simplifiedArtist, keys::Artist)) return false;
  return !settings.matchTitle || hasKey(track, keys::simplifiedName, keys::Name);
}

quint32 Reader::idOf(const Dictionary &track, Key stored, Key display) {
  const Value &key = track.value(stored);
  return key.isText() ? ids.ofKey(key.toText()) : ids.ofName(track.value(display).toText());
}

quint32 Reader::albumId(const Value &text, bool isKey) {
  if (text.toText().isEmpty()) return 0;
  return (isKey ? ids.ofKey(text.toText()) : ids.ofName(text.toText())) + 1;
}

void Reader::readFacts(size_t index) {
  const Dictionary &track = trackAt(index);
  const float duration = durationSeconds(track);
  if (!takesPart(track, duration)) return;
  quint32 bucket = 0;
  if (settings.matchKind) bucket = byKind.of(bucket, exactTexts.of(track.value(keys::Kind).toText()));
  if (settings.matchSize) bucket = bySize.of(bucket, exactTexts.of(sizeKey(track.value(keys::Size))));
  keys.byFacts[index] = bucket;
  if (settings.matchArtist) bucket = byArtist.of(bucket, idOf(track, keys::simplifiedArtist, keys::Artist));
  keys.byArtist[index] = bucket;
  if (settings.matchDuration) keys.seconds[index] = duration;
}

void Reader::readName(size_t index) {
  quint32 bucket = keys.byArtist[index];
  if (settings.matchTitle) bucket = byName.of(bucket, idOf(trackAt(index), keys::simplifiedName, keys::Name));
  keys.byName[index] = bucket;
}

void Reader::readAlbum(size_t index) {
  const Dictionary &track = trackAt(index);
  quint32 seed = keys.byName[index], candidate = seed;
  if (settings.matchAlbum) {
    const Value &stored = track.value(keys::simplifiedAlbum);
    const Value &album = track.value(keys::Album);
    seed = byAlbum.of(seed, albumId(album, false));
    candidate = byAlbum.of(candidate, stored.isText() ? albumId(stored, true) : albumId(album, false));
  }
  const Value &group = track.value(keys::DupeGroup);
  const bool maySeed = !settings.matchDuration || keys.seconds[index] != 0.0F;
  if (maySeed && group.toInteger() == 0) keys.asSeed[index] = seed;
  if (group.isNull()) keys.asCandidate[index] = candidate;
}

/// Which tracks have another of their bucket in their window: nobody else needs a name's key.
std::vector<bool> tracksWithCompany(const DurationBuckets &buckets, const DuplicateSettings &settings,
                                    size_t count) {
  std::vector<bool> hasCompany(count);
  for (quint32 number = 0; number < buckets.count(); ++number) {
    const std::span<const DurationBuckets::Entry> bucket = buckets.bucket(number);
    for (size_t place = 1; place < bucket.size(); ++place) {
      const auto &[shorter, first] = bucket[place - 1];
      const auto &[longer, second] = bucket[place];
      if (!settings.inWindow(shorter, longer) && !settings.inWindow(longer, shorter)) continue;
      hasCompany[first] = hasCompany[second] = true;
    }
  }
  return hasCompany;
}

}  // namespace

TrackKeys::TrackKeys(const Array &tracks, const DuplicateSettings &settings,
                     const std::atomic<bool> &cancelled) {
  const auto count = size_t(tracks.size());
  seconds.assign(count, 0.0F);
  for (auto *bucketOf : {&byFacts, &byArtist, &byName, &asSeed, &asCandidate}) {
    bucketOf->assign(count, kNoBucket);
  }
  Reader reader(*this, tracks, settings);
  for (size_t index = 0; index < count; ++index) {
    if (index % kCancelInterval == 0 && cancelled) return;
    reader.readFacts(index);
  }
  const std::vector<bool> hasCompany = tracksWithCompany({byArtist, seconds}, settings, count);
  for (size_t index = 0; index < count; ++index) {
    if (index % kCancelInterval == 0 && cancelled) return;
    if (!hasCompany[index]) continue;
    reader.readName(index);
    reader.readAlbum(index);
  }
}
