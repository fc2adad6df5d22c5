#pragma once

#include <QStringView>
#include <unordered_map>
#include <vector>

#include "values/Key.h"

/// The numbers that stand for keys in a store's records, as its table `keys` lists them. Numbers count from 0
/// without gaps. One thread.
class RecordKeys {
 public:
  /// The number of a key, a new one if it has none.
  quint32 numberOf(Key key);
  /// The number of a key, or -1 if no record can hold it.
  qint64 find(Key key) const;
  /// The key of a number; the absent key for one that is not listed.
  Key key(quint32 number) const { return number < texts.size() ? texts[number] : Key(); }

  /// Takes over a row of the table. Rows come in order; one that does not follow is ignored.
  void load(quint32 number, QStringView text);
  void clear();

  /// How many keys there are, and how many of them the table has.
  quint32 size() const { return quint32(texts.size()); }
  quint32 stored() const { return storedCount; }
  void setStored(quint32 count) { storedCount = count; }

 private:
  struct KeyHash {
    size_t operator()(Key key) const { return key.hash(); }
  };
  std::vector<Key> texts;
  std::unordered_map<Key, quint32, KeyHash> numbers;
  quint32 storedCount = 0;
};
