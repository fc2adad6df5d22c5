#pragma once

#include "ctl/JsonWriter.h"
#include "ctl/Terminal.h"

/// A row of names that are spelled in several ways, told as JSON or for reading.
class NamesReport {
 public:
  explicit NamesReport(const Dictionary &nameRow);

  /// {"type": "artist" or "album", "preferred": TEXT, "songs": [...]}: a song by its persistent ID, or as an
  /// object of the names where it has none, as a spelling has none that no song bears.
  void writeJson(JsonWriter *json) const;
  /// Each spelling with the number of its songs, the preferred one in brackets.
  void print(Terminal &terminal) const;

 private:
  /// A spelling, and how many songs bear it.
  struct Spelling {
    QString text;
    qsizetype songs = 0;
  };
  std::vector<Spelling> spellings() const;
  Value briefly(const Dictionary &song) const;

  const Dictionary row;
  const bool isArtist;
  /// "Artist" or "Album".
  const Key nameKey;
};
