#pragma once

#include "keeper/library/StoreRows.h"

/// One change of a key.
namespace keyEdits {

DictionaryEntry set(Key key, const Value &value);
DictionaryEntry remove(Key key);
/// True only when set, as the library stores flags.
DictionaryEntry setFlag(Key key, bool isSet);
/// Absent for 0, as the library stores numbers.
DictionaryEntry setNumber(Key key, qint64 number);
/// Absent when empty, as the library stores texts.
DictionaryEntry setText(Key key, const QString &text);

}  // namespace keyEdits
