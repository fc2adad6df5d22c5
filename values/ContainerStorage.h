#pragma once

#include <memory>
#include <vector>

#include "values/Value.h"

// Inside of `Array` and `Dictionary`; only the sources of this folder include it.

struct ArrayStorage : Counted {
  std::vector<Value> values;
  /// Members that are containers or nothing.
  qsizetype unplain = 0;
};

/// Where each key of a large dictionary stands: open addressing over entry numbers plus one, 0 for free.
class KeyIndex {
 public:
  void rebuild(const std::vector<DictionaryEntry> &entries);
  void add(const std::vector<DictionaryEntry> &entries, size_t entry);
  /// The entry's number, or -1.
  qsizetype find(const std::vector<DictionaryEntry> &entries, Key key) const;

 private:
  std::vector<quint32> slots_;
};

struct DictionaryStorage : Counted {
  std::vector<DictionaryEntry> entries;
  /// Stands once there are more than `kIndexedSize` entries.
  std::unique_ptr<KeyIndex> index;
  qsizetype containers = 0;

  static constexpr size_t kIndexedSize = 48;

  DictionaryStorage() = default;
  DictionaryStorage(const DictionaryStorage &other);
  qsizetype find(Key key) const;
  void append(Key key, Value value);
  void refreshIndex();
};

inline bool isPlainMember(const Value &value) { return !value.isContainer() && !value.isNull(); }
