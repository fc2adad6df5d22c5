#pragma once

#include <QHash>
#include <QStringList>

#include "values/Value.h"

/// Decides which tracks of the library are songs. One thread.
class TrackFilter {
 public:
  enum class Verdict { Kept, NoKind, Video, NoDuration, IgnoredKind, IgnoredKindPart, Ringtone };
  static constexpr int kVerdictCount = 7;

  /// Reads "ignoreKinds" and "ignoreKindSubstrings"; absent or wrong tables ignore nothing.
  explicit TrackFilter(const Dictionary &resources);

  Verdict verdictOn(const Dictionary &track);

  const QStringList &kinds() const { return ignoreKinds; }
  const QStringList &kindSubstrings() const { return ignoreKindSubstrings; }

 private:
  Verdict verdictOnKind(const QString &kind) const;

  QStringList ignoreKinds;
  QStringList ignoreKindSubstrings;
  /// A library has few kinds: each is judged once.
  QHash<QString, Verdict> judged;
};
