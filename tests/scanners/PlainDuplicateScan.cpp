#include "tests/scanners/PlainDuplicateScan.h"

#include "support/Copy.h"
#include "text/Simplified.h"
#include "values/Keys.h"

namespace {

Value seedKey(const Dictionary &track, Key stored, Key display) {
  return track.value(stored).isText() ? track.value(stored) : simplifiedValue(track.value(display));
}

Value storedKey(const Dictionary &track, Key stored, Key display) {
  const Value key = seedKey(track, stored, display);
  if (!key.isNull() && !track.value(stored).isText()) track.set(stored, key);
  return key;
}

bool exists(const PlainDuplicateScan &scan, const Dictionary &track) {
  const QString path = track.value(keys::Path).toText();
  return !path.isEmpty() && scan.fileExists(path);
}

bool sameTexts(const Value &a, const Value &b) {
  return a.isText() && b.isText() && a.toText() == b.toText();
}

}  // namespace

struct PlainDuplicateScan::Seed {
  Dictionary track;
  Value artist, name, album;
  float seconds;
  QSet<QString> ignored;
};

bool PlainDuplicateScan::qualifies(const Seed &seed) const {
  return exists(*this, seed.track) && (!settings.matchKind || seed.track.value(keys::Kind).isText()) &&
         (!settings.matchSize || seed.track.value(keys::Size).isNumber()) &&
         (!settings.matchDuration || seed.seconds != 0.0F) &&
         (!settings.matchArtist || !seed.artist.isNull()) && (!settings.matchTitle || !seed.name.isNull()) &&
         !settings.isLong(seed.seconds) && seed.track.value(keys::DupeGroup).toInteger() == 0;
}

bool PlainDuplicateScan::keysMatch(const Seed &seed, const Dictionary &candidate) const {
  if (settings.matchArtist) {
    const Value key = storedKey(candidate, keys::simplifiedArtist, keys::Artist);
    if (!sameTexts(key, seed.artist)) return false;
  }
  if (settings.matchTitle) {
    const Value key = storedKey(candidate, keys::simplifiedName, keys::Name);
    if (!sameTexts(key, seed.name)) return false;
  }
  if (!settings.matchAlbum) return true;
  return storedKey(candidate, keys::simplifiedAlbum, keys::Album).toText() == seed.album.toText();
}

bool PlainDuplicateScan::matches(const Seed &seed, const Dictionary &candidate) const {
  if (candidate.contains(keys::DupeGroup)) return false;
  if (settings.matchKind && !sameTexts(candidate.value(keys::Kind), seed.track.value(keys::Kind)))
    return false;
  const Value &size = candidate.value(keys::Size);
  if (settings.matchSize && (!size.isNumber() || compare(size, seed.track.value(keys::Size)) != 0))
    return false;
  const float seconds = durationSeconds(candidate);
  const float variation = float(settings.durationVariation);
  const float begin = seed.seconds - variation, end = seed.seconds + variation;
  if (settings.matchDuration && !(begin <= seconds && seconds <= end)) return false;
  if (!keysMatch(seed, candidate) || settings.isLong(seconds)) return false;
  const Value &pid = candidate.value(keys::PersistentID);
  return !(pid.isText() && seed.ignored.contains(pid.toText())) && exists(*this, candidate);
}

void PlainDuplicateScan::run() {
  tracks = copyDeep(tracks);
  const auto count = quint32(tracks.size());
  comparisons += double(float(count) / 1000.0F);
  qint32 group = 1;
  for (; scanned < count && !isCancelled(scanned); ++scanned) {
    const Dictionary track = tracks.at(scanned).toDictionary();
    const bool timed = settings.matchDuration || settings.ignoreLong;
    const Seed seed{track,
                    seedKey(track, keys::simplifiedArtist, keys::Artist),
                    seedKey(track, keys::simplifiedName, keys::Name),
                    simplifiedValue(track.value(keys::Album)),
                    timed ? durationSeconds(track) : 0.0F,
                    ignored(track.value(keys::PersistentID).toText())};
    std::vector<Dictionary> members;
    for (quint32 other = scanned + 1; qualifies(seed) && other < count; ++other) {
      const Dictionary candidate = tracks.at(other).toDictionary();
      if (matches(seed, candidate)) members.push_back(candidate);
    }
    comparisons += (count - scanned - 1) / 1000.0;
    if (members.empty()) continue;
    members.insert(members.begin(), track);
    for (const Dictionary &row : members) {
      row.set(keys::DupeGroup, group);
      rows.append(row);
    }
    ++group;
  }
}
