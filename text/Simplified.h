#pragma once

#include <QString>

#include "values/Value.h"

/// Installs the spelling equivalences for all threads: every key of `simplifiers` is replaced by its value,
/// longest first; with `removeTrailingS` each word loses an S at its end. A null dictionary counts as an
/// empty one. Work under way ends with the table it began with.
void setSimplifiersDictionaryRemoveTrailingS(const Dictionary &simplifiers, bool removeTrailingS);

/// Takes the table away, as before the first installation.
void clearSimplifiers();

/// The key by which names are compared: lower-case ASCII letters and digits, without minor words, accents and
/// punctuation, after the spelling equivalences. A name that leaves none is its own lower-case form. Any
/// thread.
QString simplified(const QString &text);

/// The simplified text of a text; the null value for anything else.
Value simplifiedValue(const Value &text);

/// True if the texts are equal or have one simplified form. An absent (null) `other` equals none.
bool isSimpleEqualTo(const QString &text, const QString &other);
