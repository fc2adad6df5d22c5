#pragma once

#include <functional>

#include "scanners/NameKeyMethod.h"
#include "values/Value.h"

/// The scan for inconsistent names as a walk over all pairs: what the index must agree with, row by row and
/// key by key.
struct PlainNameScan {
  Array tracks;  ///< Changed by the scan; some stand in rows.
  NameKeyMethod method;
  /// Whether the pass of a seed ends before a candidate; the scan then ends behind that seed.
  std::function<bool(quint32 seed, quint32 candidate)> isCancelled;
  /// Called for each row before it counts. May throw: the seed's rows that are not counted yet are lost.
  std::function<void(const Dictionary &row)> choose = [](const Dictionary &) {};

  Array rows = Array::make();
  double comparisons = 0.0;
  quint32 scanned = 0;

  void run();

 private:
  struct Seed;
  bool compareWith(Seed &seed, const Dictionary &candidate);
  bool isAlbumArtistOther(const Seed &seed, const Dictionary &candidate);
  void report(Key mark, const std::vector<Dictionary> &songs);
};
