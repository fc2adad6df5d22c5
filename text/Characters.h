#pragma once

#include <QString>

/// The text without the code units that are members of `set`.
QString stringByDeletingCharactersInSet(const QString &text, const QString &set);

/// The first character of each word in upper case, the rest in lower; a word is a run without white space.
QString capitalizedString(const QString &text);

/// The first 16-bit unit in upper case, all the rest in lower; a text of fewer than 2 units as it is.
QString capitalizedPhraseString(const QString &text);

/// A text all in lower case, or all in upper, as `capitalizedString` has it; others unchanged.
QString correctedCaseString(const QString &text);

/// The order of two dotted texts by their last components, then those before: -1 or 1. Code units order; of
/// components that agree as far as the shorter goes the ones before decide. 1 when the first text has run
/// out, so equal texts give 1; -1 when only the other has.
int reversedCompare(const QString &text, const QString &other);
