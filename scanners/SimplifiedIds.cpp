#include "scanners/SimplifiedIds.h"

#include "text/Simplified.h"

quint32 SimplifiedIds::ofName(const QString &name) {
  // Plain ASCII is simplified faster than it is found again, and needs no memory.
  if (QtPrivate::isAscii(name)) return ofKey(simplified(name));
  const auto known = names.constFind(name);
  if (known != names.constEnd()) return *known;
  const quint32 id = ofKey(simplified(name));
  names.insert(name, id);
  return id;
}

quint32 SimplifiedIds::ofKey(const QString &key) {
  return keys.of(key);
}
