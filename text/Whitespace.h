#pragma once

#include <QString>

/// The text without blanks, tabs and other white space at both ends. Line breaks are none of these: one at an
/// end stays, and what stands inside of it.
QString trimmedOfWhitespace(const QString &text);

/// True for two blanks in a row. Nothing else counts: no tab, no blank at an end.
bool containsRedundantWhitespace(const QString &text);

/// True if the text holds a character that nobody sees: a zero-width space, joiner or non-joiner, or a byte
/// order mark.
bool containsZeroWidthCharacter(const QString &text);

/// The text with each of those as an open box (U+2423); the text itself if it holds none.
QString stringWithVisibleZeroWidthCharacters(const QString &text);
