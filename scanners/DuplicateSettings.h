#pragma once

#include <QtGlobal>

#include "values/Value.h"

/// Which tests decide that two tracks are duplicates. Read once for each scan; later changes wait for the
/// next.
struct DuplicateSettings {
  bool matchArtist = true;
  bool matchTitle = true;
  bool matchDuration = true;
  bool matchAlbum = false;
  bool matchKind = false;
  bool matchSize = false;
  /// Tracks longer than `longLimit` seconds are left out.
  bool ignoreLong = true;
  /// Half-width of the duration window in seconds.
  qint32 durationVariation = 0;
  float longLimit = 0.0F;

  static DuplicateSettings fromPreferences();

  /// One line to the log that tells them all.
  void log() const;

  bool isLong(float seconds) const { return ignoreLong && seconds > longLimit; }
  /// The ends of the window of durations around a seed's, both inside. In 32-bit floats, as durations are.
  float windowBegin(float seed) const { return seed - float(durationVariation); }
  float windowEnd(float seed) const { return seed + float(durationVariation); }
  /// True for every duration where durations are not compared.
  bool inWindow(float seed, float candidate) const {
    return !matchDuration || (windowBegin(seed) <= candidate && candidate <= windowEnd(seed));
  }
};

/// A track's duration in seconds: the 32-bit quotient of its milliseconds as a 32-bit float. 0 if it has
/// none.
float durationSeconds(const Dictionary &track);
