#pragma once

#include <QSet>
#include <QString>
#include <atomic>
#include <functional>
#include <memory>
#include <vector>

#include "scanners/CandidateIndex.h"
#include "scanners/DuplicateSettings.h"
#include "scanners/EarlierSeeds.h"
#include "scanners/FileMemory.h"
#include "scanners/TrackKeys.h"

/// Finds the group of each seed among tracks of its own: the seed and all later tracks that pass every test
/// against it, with the rows that a walk over all pairs would make of them. One thread.
class DuplicateFinder {
 public:
  /// Given a persistent ID, all that the user declared not to be duplicates of it.
  using IgnoredDuplicates = std::function<QSet<QString>(const QString &pid)>;

  /// Prepares the index, the long part of a scan; a set flag ends that early, and then no group may be asked
  /// for. `tracks` must be dictionaries that nobody else refers to: those of groups become rows. `firstSeed`
  /// is the first track that groupOf will be asked about.
  DuplicateFinder(const Array &tracks, const DuplicateSettings &settings, FileExists fileExists,
                  IgnoredDuplicates ignoredDuplicates, quint32 firstSeed, const std::atomic<bool> &cancelled);
  DuplicateFinder(const DuplicateFinder &) = delete;

  /// The rows of the group that a track begins, the track first; none if it begins none. To be asked of the
  /// tracks in rising order. Rows have the keys that were compared but no group number yet. An exception from
  /// the functions given passes through and leaves every track as free as it was.
  std::vector<Dictionary> groupOf(quint32 seed);

 private:
  std::vector<quint32> membersOf(quint32 seed);
  bool wasSeed(quint32 track);
  bool wasComparedEarlier(quint32 seed, std::unique_ptr<EarlierSeeds> &level,
                          const std::vector<quint32> &buckets);
  Dictionary rowOf(quint32 track) const;
  void storeKeysOfSeed(quint32 seed, const Dictionary &row);

  const Array tracks;
  const DuplicateSettings settings;
  const IgnoredDuplicates ignoredDuplicatesForPID;
  const quint32 firstSeed;
  FileMemory files;
  const TrackKeys keys;
  CandidateIndex index;
  // Made when the first row needs them.
  std::unique_ptr<EarlierSeeds> seedsByFacts, seedsByArtist, seedsByName;
};
