#pragma once

#include <vector>

#include "values/Value.h"

/// The user's wishes for the marks, read once for each run.
struct AutomarkRules {
  /// The criteria for the row of the information, the most important first: numbers from 0 to 7; others tell
  /// no rows apart.
  std::vector<qint32> preferInfoTypes;
  /// The criterion for the row of the audio: numbers from 0 to 6; others are 0.
  qint32 preferAudioData15 = 0;
  /// Kilobits per second.
  qint32 preferAudioFileBitRate = 0;
  /// The preferred kind of file; 6 is any that is not protected, -1 none.
  qint32 preferredKind = -1;

  /// What the settings ask for at present.
  static AutomarkRules fromPreferences();
  /// What settings in a table ask for, under the same keys. Numbers saturate at 32 bits; a text reads as the
  /// whole number that it begins with, else 0. Among the criteria, what is neither text nor number is left
  /// out; criteria that are no list are none.
  static AutomarkRules fromSettings(const Dictionary &settings);
};
