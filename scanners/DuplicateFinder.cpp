#include "scanners/DuplicateFinder.h"

#include "text/Simplified.h"
#include "values/Keys.h"

namespace {

bool lacksKey(const Dictionary &row, Key stored, Key display) {
  return !row.value(stored).isText() && row.value(display).isText();
}

void storeKey(const Dictionary &row, Key stored, Key display) {
  if (lacksKey(row, stored, display)) row.set(stored, simplified(row.value(display).toText()));
}

}  // namespace

DuplicateFinder::DuplicateFinder(const Array &allTracks, const DuplicateSettings &inForce,
                                 FileExists fileExists, IgnoredDuplicates ignoredDuplicates, quint32 first,
                                 const std::atomic<bool> &cancelled)
    : tracks(allTracks),
      settings(inForce),
      ignoredDuplicatesForPID(std::move(ignoredDuplicates)),
      firstSeed(first),
      files(allTracks, std::move(fileExists)),
      keys(allTracks, settings, cancelled),
      index(keys, settings) {}

std::vector<quint32> DuplicateFinder::membersOf(quint32 seed) {
  // The disk is asked only where the answer can matter.
  if (!index.hasCompany(seed) || !files.exists(seed)) return {};
  const std::vector<quint32> &candidates = index.laterCandidates(seed);
  if (candidates.empty()) return {};
  const QString &pid = tracks.at(seed).toDictionary().value(keys::PersistentID).toText();
  const QSet<QString> ignored = ignoredDuplicatesForPID ? ignoredDuplicatesForPID(pid) : QSet<QString>();
  std::vector<quint32> members;
  for (const quint32 candidate : candidates) {
    const Value &candidatePID = tracks.at(candidate).toDictionary().value(keys::PersistentID);
    if (candidatePID.isText() && ignored.contains(candidatePID.toText())) continue;
    if (files.exists(candidate)) members.push_back(candidate);
  }
  return members;
}

std::vector<Dictionary> DuplicateFinder::groupOf(quint32 seed) {
  const std::vector<quint32> members = membersOf(seed);
  if (members.empty()) return {};
  std::vector<Dictionary> rows{rowOf(seed)};
  storeKeysOfSeed(seed, rows.front());
  for (const quint32 member : members) {
    const Dictionary row = rowOf(member);
    if (settings.matchArtist) storeKey(row, keys::simplifiedArtist, keys::Artist);
    if (settings.matchTitle) storeKey(row, keys::simplifiedName, keys::Name);
    if (settings.matchAlbum) storeKey(row, keys::simplifiedAlbum, keys::Album);
    rows.push_back(row);
  }
  for (const quint32 member : members) index.take(member);
  return rows;
}

Dictionary DuplicateFinder::rowOf(quint32 track) const {
  const Dictionary &copied = tracks.at(track).toDictionary();
  return copied.isMutable() ? copied : copied.copyMembers(true);
}

bool DuplicateFinder::wasSeed(quint32 track) {
  if (track < firstSeed || index.isTaken(track)) return false;
  const Dictionary &row = tracks.at(track).toDictionary();
  const bool hasDuration = !settings.matchDuration || keys.seconds[track] != 0.0F;
  // A track that began a group has the number of that group by now.
  return hasDuration && (keys.asSeed[track] != kNoBucket || row.value(keys::DupeGroup).toInteger() == 0) &&
         files.exists(track);
}

bool DuplicateFinder::wasComparedEarlier(quint32 seed, std::unique_ptr<EarlierSeeds> &level,
                                         const std::vector<quint32> &buckets) {
  if (!level) {
    level = std::make_unique<EarlierSeeds>(buckets, keys.seconds, settings,
                                           [this](quint32 track) { return wasSeed(track); });
  }
  return level->anyBefore(seed);
}

// A seed's own keys are not kept when it is compared as a seed. Its row shows those that were kept when an
// earlier seed met it as a candidate, as far as the comparison went.
void DuplicateFinder::storeKeysOfSeed(quint32 seed, const Dictionary &row) {
  if (!row.value(keys::DupeGroup).isNull()) return;
  if (settings.matchArtist && lacksKey(row, keys::simplifiedArtist, keys::Artist) &&
      wasComparedEarlier(seed, seedsByFacts, keys.byFacts)) {
    storeKey(row, keys::simplifiedArtist, keys::Artist);
  }
  if (settings.matchTitle && lacksKey(row, keys::simplifiedName, keys::Name) &&
      wasComparedEarlier(seed, seedsByArtist, keys.byArtist)) {
    storeKey(row, keys::simplifiedName, keys::Name);
  }
  if (settings.matchAlbum && lacksKey(row, keys::simplifiedAlbum, keys::Album) &&
      wasComparedEarlier(seed, seedsByName, keys.byName)) {
    storeKey(row, keys::simplifiedAlbum, keys::Album);
  }
}
