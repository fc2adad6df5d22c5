#pragma once

#include <QHash>
#include <QStringList>
#include <functional>
#include <optional>

#include "scanners/NameKeyMethod.h"
#include "scanners/StyledText.h"
#include "values/Value.h"

/// Decides which spelling of an artist or album should win, shows the spellings, and lets the user take
/// another. Its table of exceptions is read by any thread once it is set; the rest is for the main thread
/// unless it says otherwise.
class InconNameController {
 public:
  /// Which 16-bit unit of a laid-out line stands under a point `x` pixels from its left end; none if there is
  /// none.
  using Layout = std::function<std::optional<qsizetype>(const StyledText &line, float x)>;

  /// Words that are right in lower case inside a title.
  static const QStringList &uncapitalizedWords();

  /// Builds the table of exceptions from "oddNameArtists" and "oddNameAlbums", by the spelling equivalences
  /// in force. To be called again when those change; no scan may run.
  void setResources(const Dictionary &resources);

  /// Chooses the spelling of a row by the exceptions, else by the best score, and keeps it under `inconPref`
  /// of a mutable row. Spellings that stand in "Album Artist" alone are added to the row's songs. Nothing,
  /// and no change, if the best song has no name. Any one thread at a time for a row.
  std::optional<QString> automaticallyChoosePreferredForDictionaryComparisonSelector(
      const Dictionary &row, const NameKeyMethod &method) const;

  /// Takes the spelling under a point of the line that `calculatedInconsistentAttributedStringForDictionary`
  /// gives; nothing, and no change, if there is none.
  std::optional<QString> userChoosePreferredForDictionaryUsingXPoint(const Dictionary &row, float x,
                                                                     const Layout &layout) const;
  /// Takes the spelling of one of the row's songs; nothing, and no change, if it has no name.
  std::optional<QString> userChoosePreferredForDictionaryUsingSong(const Dictionary &row,
                                                                   qint32 songIndex) const;

  /// What the table of names shows for a row: the spellings, the preferred one bold in brackets.
  StyledText calculatedInconsistentAttributedStringForDictionary(const Dictionary &row) const;

  /// The last of the row's songs that has the preferred spelling. Throws std::out_of_range if none has.
  Dictionary preferredSongFromDictionary(const Dictionary &row) const;

  /// How well a spelling is written: its length and a point for each well capitalized word; 0 with white
  /// space at an end, two blanks in a row or characters that cannot be seen. An absent (null) one has 0.
  static qint32 nameScore(const QString &name);
  /// The key that a row is about: "Artist" or "Album".
  static Key displayKeyOf(const Dictionary &row);

 private:
  struct OddName {
    QString artist;
    /// By the simplified album.
    QHash<QString, QString> albums;
  };
  std::optional<QString> exceptionFor(const Dictionary &row) const;

  /// By the simplified artist.
  QHash<QString, OddName> exceptions;
};
