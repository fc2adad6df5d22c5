#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "values/Value.h"

/// One spelling of a row of names.
struct SpellingChoice {
  QString name;
  /// The name with what cannot be seen in it made visible, so that spellings which look alike differ.
  QString visibleName;
  /// The index in `inconSongs` of a song that is spelled so.
  qint32 songIndex = 0;
  /// How many songs of the library are spelled so; an album artist or a known name may stand in the row
  /// without a song.
  int songs = 0;
  bool isPreferred = false;
};

/// The distinct spellings of a row, in the order shown. Under the lock of the row's list.
std::vector<SpellingChoice> spellingChoicesOf(const Dictionary &row);

/// The spelling behind the preferred one, and behind the last the first; none if there is no other.
std::optional<SpellingChoice> choiceAfterPreferred(const std::vector<SpellingChoice> &choices);
