#pragma once

#include <QHash>
#include <QString>

#include "scanners/Numbering.h"

/// Small numbers for comparison keys: equal keys have equal numbers. Each distinct display text
/// that is costly to simplify is simplified once. One thread.
class SimplifiedIds {
 public:
  /// The number of the key that a display text has.
  quint32 ofName(const QString &name);
  /// The number of a key that is known already.
  quint32 ofKey(const QString &key);

 private:
  QHash<QString, quint32> names;
  Numbering<QString> keys;
};
