#include "scanners/NameKeys.h"

NameKeys::NameKeys(QString (*keyFunction)(const QString &text)) : keyOf(keyFunction) {
  ofKey(QString());
}

quint32 NameKeys::ofName(const QString &name) {
  if (name.isEmpty()) return ofKey(keyOf(name));
  if (name == lastName) return lastNumber;
  const auto known = names.constFind(name);
  const quint32 number = known != names.constEnd() ? *known : ofKey(keyOf(name));
  if (known == names.constEnd()) names.insert(name, number);
  lastName = name;
  lastNumber = number;
  return number;
}

quint32 NameKeys::ofKey(const QString &key) {
  const quint32 number = numbers.of(key);
  if (number == texts.size()) texts.push_back(key);
  return number;
}
