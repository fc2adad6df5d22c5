#pragma once

#include "values/Value.h"

/// Rows in words, fit for a terminal.
namespace rowText {

/// The text under a key; `without` if it has none.
QString textOf(const Dictionary &row, Key key, const char *without);
/// "Artist - Name".
QString titleOf(const Dictionary &row);
/// Time, kind, bit rate, size and file in columns.
QString lineOf(const Dictionary &row);
/// "1 song", "2 songs".
QString counted(qsizetype count, const char *one, const char *many);

}  // namespace rowText
