#pragma once

#include <unordered_map>
#include <vector>

#include "values/Value.h"

/// Gives equal leaves one small number, and the numbers the leaves' order: what is done for a name is done
/// once. Refers to the values it is given; they must outlive it. One thread.
class DistinctValues {
 public:
  /// The number of a value, from 0 on in the order of first sight.
  quint32 numberOf(const Value &value);
  size_t count() const { return values.size(); }
  const Value &valueOf(quint32 number) const { return *values[number]; }
  /// For each number the rank of its value among all, by `compare`.
  std::vector<quint32> ranks() const;

 private:
  struct Hash {
    size_t operator()(const Value *value) const;
  };
  struct Equal {
    bool operator()(const Value *a, const Value *b) const { return compare(*a, *b) == 0; }
  };

  std::unordered_map<const Value *, quint32, Hash, Equal> numbers;
  std::vector<const Value *> values;
};
