#include "app/library/CalculatedTexts.h"

#include <cmath>

#include "values/Keys.h"

namespace {

QString twoDigits(qint64 number) {
  return (number <= 9 ? QStringLiteral("0") : QString()) + QString::number(number);
}

bool isOfTwoNumbers(Key key, const Value &value) {
  return (key == keys::calc_trackOfTotal || key == keys::trackOfTotal) && value.toText().contains(u'/');
}

}  // namespace

Value CalculatedTexts::keptOrCalculated(const Dictionary &row, Key key,
                                        const std::function<Value()> &calculate) {
  if (const Value &kept = row.value(key); !kept.isNull()) return kept;
  Value value = calculate();
  if (row.isMutable() && !isOfTwoNumbers(key, value))
    row.set(key, value.isNull() ? Value(QStringLiteral("")) : value);
  return value;
}

Value CalculatedTexts::humanTimeOf(const Dictionary &row) {
  const Value &milliseconds = row.value(keys::TotalTime);
  if (milliseconds.isNull()) return {};
  qint64 left = qint64(std::ceil(float(milliseconds.toInteger()) / 1000.0f));
  QString text;
  if (left >= 3600) {
    text = QString::number(left / 3600) + u':';
    left %= 3600;
    if (left <= 599) text += u'0';
  }
  return text + QString::number(left / 60) + u':' + twoDigits(left % 60);
}

Value CalculatedTexts::trackOfTotalOf(const Dictionary &row) {
  const qint64 number = row.value(keys::TrackNumber).toInteger();
  const qint64 count = row.value(keys::TrackCount).toInteger();
  if (number == 0) return {};
  const QString text = QString::number(number);
  return count == 0 ? text : text + u'/' + QString::number(count);
}

QString CalculatedTexts::firstWordOf(const QString &kind) {
  return kind.left(kind.indexOf(u' '));
}

Value CalculatedTexts::withBitRate(const QString &label, const Dictionary &row) {
  const qint64 bitRate = row.value(keys::BitRate).toInteger();
  return bitRate == 0 ? label : label + u' ' + QString::number(bitRate);
}
