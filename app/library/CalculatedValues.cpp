#include "app/library/CalculatedValues.h"

#include <array>

#include "app/library/CalculatedTexts.h"
#include "values/Keys.h"

namespace {

bool isCalculated(Key key) {
  return key.text().startsWith(u"calc_");
}

/// As many stars as there are whole twenties in the rating, 0 to 5.
Value starsOf(const Dictionary &row) {
  static const std::array<QString, 6> stars = [] {
    std::array<QString, 6> made;
    for (size_t count = 0; count < made.size(); ++count)
      made[count] = QString(qsizetype(count), QChar(0x2605));
    return made;
  }();
  const qint64 index = row.value(keys::Rating).toInteger() / 20;
  return index < 0 || index >= qint64(stars.size()) ? Value() : Value(stars[size_t(index)]);
}

Value withoutCalculated(const Dictionary &dictionary) {
  bool hasCalculated = false;
  for (const DictionaryEntry &entry : dictionary) hasCalculated = hasCalculated || isCalculated(entry.key);
  if (!hasCalculated) return dictionary;
  const Dictionary cleaned = dictionary.copyMembers(true);
  cleaned.removeIf([](const DictionaryEntry &entry) { return isCalculated(entry.key); });
  if (!dictionary.isMutable()) cleaned.freeze();
  return cleaned;
}

bool isOther(const Value &object, const Value &other) {
  return !object.toDictionary().isSame(other.toDictionary()) || !object.toArray().isSame(other.toArray());
}

Value withoutCalculated(const Array &array) {
  Array cleaned;
  for (qsizetype i = 0; i < array.size(); ++i) {
    const Value member = CalculatedValues::objectWithCalculatedValuesRemoved(array.at(i));
    if (!isOther(array.at(i), member)) continue;
    if (cleaned.isNull()) cleaned = array.copyMembers(true);
    cleaned.set(i, member);
  }
  if (cleaned.isNull()) return array;
  if (!array.isMutable()) cleaned.freeze();
  return cleaned;
}

}  // namespace

CalculatedValues::CalculatedValues(const Dictionary &resources,
                                   std::function<Value(const Dictionary &)> inconsistentName)
    : kinds(resources.value(keys::kinds).toDictionary()),
      calculatedInconsistentName(std::move(inconsistentName)) {}

Value CalculatedValues::calculatedValueForDictionaryKey(const Dictionary &row, Key key) const {
  return CalculatedTexts::keptOrCalculated(row, key, [&] { return calculated(row, key); });
}

Value CalculatedValues::calculated(const Dictionary &row, Key key) const {
  if (key == keys::calc_rating) return starsOf(row);
  if (key == keys::calc_humanTime) return CalculatedTexts::humanTimeOf(row);
  if (key == keys::calc_trackOfTotal) return CalculatedTexts::trackOfTotalOf(row);
  if (key == keys::calc_type) return typeOf(row);
  if (key == keys::calc_inconsistentName && calculatedInconsistentName)
    return calculatedInconsistentName(row);
  return {};
}

Value CalculatedValues::typeOf(const Dictionary &row) const {
  const QString &kind = row.value(keys::Kind).toText();
  if (kind.isEmpty()) return {};
  const std::optional<FileKinds::Match> match = kinds.matchOf(kind);
  if (!match) return CalculatedTexts::withBitRate(CalculatedTexts::firstWordOf(kind), row);
  return CalculatedTexts::withBitRate(match->piece == u"MPEG" ? QStringLiteral("MP3") : match->piece, row);
}

Value CalculatedValues::objectWithCalculatedValuesRemoved(const Value &object) {
  if (object.type() == Value::Type::Dictionary) return withoutCalculated(object.toDictionary());
  if (object.type() == Value::Type::Array) return withoutCalculated(object.toArray());
  return object;
}
