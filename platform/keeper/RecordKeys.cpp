#include "platform/keeper/RecordKeys.h"

quint32 RecordKeys::numberOf(Key key) {
  const auto [place, isNew] = numbers.try_emplace(key, size());
  if (isNew) texts.push_back(key);
  return place->second;
}

qint64 RecordKeys::find(Key key) const {
  const auto found = numbers.find(key);
  return found == numbers.end() ? -1 : qint64(found->second);
}

void RecordKeys::load(quint32 number, QStringView text) {
  if (number != size()) return;
  numberOf(Key(text));
  storedCount = size();
}

void RecordKeys::clear() {
  texts.clear();
  numbers.clear();
  storedCount = 0;
}
