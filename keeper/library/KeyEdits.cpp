#include "keeper/library/KeyEdits.h"

namespace keyEdits {

DictionaryEntry set(Key key, const Value &value) {
  return {key, value};
}
DictionaryEntry remove(Key key) {
  return {key, Value()};
}
DictionaryEntry setFlag(Key key, bool isSet) {
  return {key, isSet ? Value(true) : Value()};
}
DictionaryEntry setNumber(Key key, qint64 number) {
  return {key, number != 0 ? Value(number) : Value()};
}
DictionaryEntry setText(Key key, const QString &text) {
  return {key, text.isEmpty() ? Value() : Value(text)};
}

}  // namespace keyEdits
