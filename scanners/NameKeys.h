#pragma once

#include <QHash>
#include <QString>
#include <vector>

#include "scanners/Numbering.h"

/// The comparison keys of names as small numbers: equal keys have equal numbers, and the empty key is 0. Each
/// distinct name's key is computed once, and each key's text is held once. One thread.
class NameKeys {
 public:
  explicit NameKeys(QString (*keyFunction)(const QString &text));

  /// The number of the key that a display text has.
  quint32 ofName(const QString &name);
  /// The number of a key that is known already.
  quint32 ofKey(const QString &key);
  /// The key with this number. Valid until the next number is asked for.
  const QString &text(quint32 number) const { return texts[number]; }
  /// How many keys there are; all numbers are below.
  quint32 count() const { return quint32(texts.size()); }

 private:
  QString (*keyOf)(const QString &text);
  QHash<QString, quint32> names;
  Numbering<QString> numbers;
  std::vector<QString> texts;
  // Names of a sorted library come in runs.
  QString lastName;
  quint32 lastNumber = 0;
};
