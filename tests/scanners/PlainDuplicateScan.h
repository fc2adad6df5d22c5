#pragma once

#include <QSet>
#include <QString>
#include <functional>

#include "scanners/DuplicateSettings.h"
#include "values/Value.h"

/// The duplicate scan as a walk over all pairs: what the index must agree with, row by row and key by key.
struct PlainDuplicateScan {
  Array tracks;  ///< Changed by the scan; some become rows.
  DuplicateSettings settings;
  std::function<bool(const QString &)> fileExists;
  std::function<QSet<QString>(const QString &)> ignored;
  /// Asked before the first seed and after each, with the number of seeds done.
  std::function<bool(quint32)> isCancelled = [](quint32) { return false; };

  Array rows = Array::make();
  double comparisons = 0.0;
  quint32 scanned = 0;

  void run();

 private:
  struct Seed;
  bool qualifies(const Seed &seed) const;
  bool matches(const Seed &seed, const Dictionary &candidate) const;
  bool keysMatch(const Seed &seed, const Dictionary &candidate) const;
};
