#pragma once

#include <QString>

#include "values/Key.h"

/// By which key two names count as one, and under which keys a track keeps what has been computed of it.
struct NameKeyMethod {
  /// The comparison key of a display text. Any thread.
  QString (*keyOf)(const QString &text);
  /// Where a track keeps the key of its "Artist", and that of its "Album Artist".
  Key artistKey;
  Key albumArtistKey;

  /// By spelling: `simplified`.
  static NameKeyMethod simplifying();
  /// By sound: `metaphoneNoMinorWords`.
  static NameKeyMethod phonetic();
  /// What the preference `inconsistentMatchMethod` asks for: 1 is by sound, anything else by spelling.
  static NameKeyMethod fromPreferences();
};
