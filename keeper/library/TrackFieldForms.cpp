#include "keeper/library/TrackFieldForms.h"

#include <cmath>

#include "keeper/library/KeyEdits.h"
#include "keeper/library/Refusal.h"

namespace trackForms {

namespace {

constexpr double kMilliseconds = 1000.0;

ScriptValue dateOrMissing(const Value &value) {
  return value.toDate() ? ScriptValue(*value.toDate()) : ScriptValue::missing();
}

}  // namespace

TrackField textFact(const QString &term, Key key) {
  return {term, key, [key](const KeyReader &keys) { return keys(key).toText(); }, {}};
}

TrackField text(const QString &term, Key key) {
  TrackField field = textFact(term, key);
  field.write = [term, key](const ScriptValue &value, const KeyReader &) -> KeyChanges {
    const std::optional<QString> given = textOfValue(value);
    if (!given) throw refusal::unfit(term);
    return {keyEdits::setText(key, *given)};
  };
  return field;
}

TrackField wholeFact(const QString &term, Key key) {
  return {term, key, [key](const KeyReader &keys) { return keys(key).toInteger(); }, {}};
}

TrackField whole(const QString &term, Key key, qint64 low, qint64 high) {
  TrackField field = wholeFact(term, key);
  field.write = [term, key, low, high](const ScriptValue &value, const KeyReader &) -> KeyChanges {
    const std::optional<qint64> given = wholeOfValue(value);
    if (!given || *given < low || *given > high) throw refusal::unfit(term);
    return {keyEdits::setNumber(key, *given)};
  };
  return field;
}

TrackField flagFact(const QString &term, Key key) {
  return {term, key, [key](const KeyReader &keys) { return keys(key).toBool(); }, {}};
}

TrackField flag(const QString &term, Key key, bool inverted) {
  TrackField field{
      term, key, [key, inverted](const KeyReader &keys) { return keys(key).toBool() != inverted; }, {}};
  field.write = [term, key, inverted](const ScriptValue &value, const KeyReader &) -> KeyChanges {
    const std::optional<bool> given = flagOfValue(value);
    if (!given) throw refusal::unfit(term);
    return {keyEdits::setFlag(key, *given != inverted)};
  };
  return field;
}

TrackField dateFact(const QString &term, Key key) {
  return {term, key, [key](const KeyReader &keys) { return dateOrMissing(keys(key)); }, {}};
}

TrackField date(const QString &term, Key key) {
  TrackField field = dateFact(term, key);
  field.write = [term, key](const ScriptValue &value, const KeyReader &) -> KeyChanges {
    if (!value.is(ScriptValue::Type::Date)) throw refusal::unfit(term);
    return {keyEdits::set(key, value.date())};
  };
  return field;
}

TrackField secondsFact(const QString &term, Key key) {
  return {
      term, key, [key](const KeyReader &keys) { return double(keys(key).toInteger()) / kMilliseconds; }, {}};
}

TrackField seconds(const QString &term, Key key) {
  TrackField field = secondsFact(term, key);
  field.write = [term, key](const ScriptValue &value, const KeyReader &) -> KeyChanges {
    constexpr double kLongest = 1.0e7;
    const std::optional<double> given = realOfValue(value);
    if (!given || *given < 0 || *given > kLongest) throw refusal::unfit(term);
    return {keyEdits::setNumber(key, std::llround(*given * kMilliseconds))};
  };
  return field;
}

TrackField rating(const QString &term, Key key, Key computed) {
  TrackField field = whole(term, key, 0, 100);
  field.write = [write = field.write, computed](const ScriptValue &value, const KeyReader &keys) {
    KeyChanges changes = write(value, keys);
    changes.push_back(keyEdits::remove(computed));
    return changes;
  };
  return field;
}

TrackField ratingKind(const QString &term, Key computed) {
  return {term,
          computed,
          [computed](const KeyReader &keys) -> ScriptValue {
            return ScriptConstant{keys(computed).toBool() ? u"computed"_qs : u"user"_qs};
          },
          {}};
}

}  // namespace trackForms
