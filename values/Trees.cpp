#include <cmath>
#include <vector>

#include "values/Value.h"

namespace {

int order(auto a, auto b) {
  return a < b ? -1 : (b < a ? 1 : 0);
}

/// Real numbers by worth; what is no number comes before all, so that sorting has one order.
int orderReals(double a, double b) {
  const bool aIsNone = std::isnan(a), bIsNone = std::isnan(b);
  return aIsNone || bIsNone ? int(bIsNone) - int(aIsNone) : order(a, b);
}

/// By the exact worths: a conversion would make neighbours among large whole numbers equal.
int orderMixed(qint64 whole, double real) {
  constexpr double kBeyond = 9223372036854775808.0;
  if (std::isnan(real)) return 1;
  if (real >= kBeyond || real < -kBeyond) return real > 0.0 ? -1 : 1;
  const double cut = std::trunc(real);
  return whole != qint64(cut) ? order(whole, qint64(cut)) : order(cut, real);
}

int compareNumbers(const Value &a, const Value &b) {
  const bool aIsReal = a.type() == Value::Type::Real, bIsReal = b.type() == Value::Type::Real;
  if (aIsReal && bIsReal) return orderReals(a.toDouble(), b.toDouble());
  if (aIsReal) return -orderMixed(b.toInteger(), a.toDouble());
  return bIsReal ? orderMixed(a.toInteger(), b.toDouble()) : order(a.toInteger(), b.toInteger());
}

/// One container of the source with the empty copy that waits for its members.
struct Pending {
  Value source, copy;
};

/// A copy of one value: finished, or an empty container that is put on the list.
Value startCopy(const Value &source, std::vector<Pending> &pending) {
  if (source.type() == Value::Type::Array) {
    const Array &array = source.toArray();
    if (array.isPlain()) return array.copyMembers(array.isMutable());
    pending.push_back({source, Array::make()});
    return pending.back().copy;
  }
  if (source.type() == Value::Type::Dictionary) {
    const Dictionary &dictionary = source.toDictionary();
    if (dictionary.isPlain()) return dictionary.copyMembers(dictionary.isMutable());
    pending.push_back({source, Dictionary::make()});
    return pending.back().copy;
  }
  return source;
}

void fill(const Array &source, const Array &copy, std::vector<Pending> &pending,
          const std::function<void(qsizetype, qsizetype)> &onMissing) {
  copy.reserve(source.size());
  for (qsizetype index = 0; index < source.size(); ++index) {
    if (source.at(index).isNull()) {
      if (onMissing) onMissing(index, source.size());
    } else {
      copy.append(startCopy(source.at(index), pending));
    }
  }
  if (!source.isMutable()) copy.freeze();
}

void fill(const Dictionary &source, const Dictionary &copy, std::vector<Pending> &pending) {
  copy.reserve(source.size());
  for (const DictionaryEntry &entry : source) copy.set(entry.key, startCopy(entry.value, pending));
  if (!source.isMutable()) copy.freeze();
}

bool sameLeaf(const Value &a, const Value &b) {
  if (a.isNumber() && b.isNumber()) return compareNumbers(a, b) == 0;
  return a.type() == b.type() && compare(a, b) == 0;
}

using Pairs = std::vector<std::pair<Value, Value>>;

/// Puts the members of two arrays on the list; false if their sizes differ.
bool pairUp(const Array &a, const Array &b, Pairs &pairs) {
  if (a.size() != b.size()) return false;
  for (qsizetype index = 0; index < a.size(); ++index) pairs.emplace_back(a.at(index), b.at(index));
  return true;
}

bool pairUp(const Dictionary &a, const Dictionary &b, Pairs &pairs) {
  if (a.size() != b.size()) return false;
  for (const DictionaryEntry &entry : a) {
    if (!b.contains(entry.key)) return false;
    pairs.emplace_back(entry.value, b.value(entry.key));
  }
  return true;
}

}  // namespace

int compare(const Value &a, const Value &b) {
  if (a.isNumber() && b.isNumber()) return compareNumbers(a, b);
  if (a.type() != b.type()) return order(a.type(), b.type());
  switch (a.type()) {
    case Value::Type::Text:
      return a.toText().compare(b.toText());
    case Value::Type::Date:
      return orderReals(a.toDate()->seconds, b.toDate()->seconds);
    case Value::Type::Data:
      return a.toData().compare(b.toData());
    default:
      return 0;
  }
}

bool isEqual(const Value &a, const Value &b) {
  Pairs pairs{{a, b}};
  while (!pairs.empty()) {
    const auto [left, right] = std::move(pairs.back());
    pairs.pop_back();
    if (left.isContainer() && left.type() == right.type()) {
      const bool paired = left.type() == Value::Type::Array
                              ? pairUp(left.toArray(), right.toArray(), pairs)
                              : pairUp(left.toDictionary(), right.toDictionary(), pairs);
      if (!paired) return false;
    } else if (!sameLeaf(left, right)) {
      return false;
    }
  }
  return true;
}

Value copyTree(const Value &source, const std::function<void(qsizetype, qsizetype)> &onMissing) {
  std::vector<Pending> pending;
  const Value root = startCopy(source, pending);
  while (!pending.empty()) {
    const Pending next = std::move(pending.back());
    pending.pop_back();
    if (next.source.type() == Value::Type::Array) {
      fill(next.source.toArray(), next.copy.toArray(), pending, onMissing);
    } else {
      fill(next.source.toDictionary(), next.copy.toDictionary(), pending);
    }
  }
  return root;
}
