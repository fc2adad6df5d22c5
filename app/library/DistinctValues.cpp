#include "app/library/DistinctValues.h"

#include <QHash>
#include <algorithm>
#include <numeric>

size_t DistinctValues::Hash::operator()(const Value *value) const {
  if (value->isText()) return qHash(value->toText());
  if (value->isNumber()) return qHash(value->toDouble());
  return size_t(value->type());
}

quint32 DistinctValues::numberOf(const Value &value) {
  const auto [place, isNew] = numbers.try_emplace(&value, quint32(values.size()));
  if (isNew) values.push_back(&value);
  return place->second;
}

std::vector<quint32> DistinctValues::ranks() const {
  std::vector<quint32> order(values.size());
  std::iota(order.begin(), order.end(), 0);
  std::sort(order.begin(), order.end(),
            [this](quint32 a, quint32 b) { return compare(*values[a], *values[b]) < 0; });
  std::vector<quint32> ranks(values.size());
  for (quint32 rank = 0; rank < order.size(); ++rank) ranks[order[rank]] = rank;
  return ranks;
}
