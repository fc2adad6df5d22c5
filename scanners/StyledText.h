#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "values/Value.h"

/// A stretch of shown text in one face.
struct StyledRun {
  QString text;
  bool bold = false;
  /// The index in `inconSongs` of the song that has this spelling; none for what is no spelling.
  std::optional<qint32> sourceIndex;
};

/// A line of text in runs. Shown at the system font's size 11.
using StyledText = std::vector<StyledRun>;

/// The line without its faces.
QString plainText(const StyledText &text);
/// The run that holds the 16-bit unit at an index of the plain text; null outside.
const StyledRun *runAt(const StyledText &text, qsizetype index);

/// As a list of dictionaries, the form in which a row keeps it.
Value valueOfStyledText(const StyledText &text);
/// Empty for anything that `valueOfStyledText` has not made.
StyledText styledTextOfValue(const Value &value);
