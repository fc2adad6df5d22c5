#include "text/PlistDate.h"

#include <QDebug>

namespace {

/// The number of `count` digits; -1 if one is none.
int number(QStringView text, qsizetype at, qsizetype count) {
  int value = 0;
  for (const QChar digit : text.mid(at, count)) {
    if (digit < u'0' || digit > u'9') return -1;
    value = value * 10 + (digit.unicode() - u'0');
  }
  return value;
}

void report(const char *fault, QStringView text) {
  qWarning("!! plistDateValue %s '%s", fault, text.toUtf8().constData());
}

}  // namespace

std::optional<Date> plistDateValue(QStringView text) {
  if (text.size() != 20) {
    report("format", text);
    return std::nullopt;
  }
  const int year = number(text, 0, 4), month = number(text, 5, 2), day = number(text, 8, 2),
            hour = number(text, 11, 2), minute = number(text, 14, 2), second = number(text, 17, 2);
  const bool isDay = year > 0 && month >= 1 && month <= 12 && day >= 1 && day <= 31;
  const bool isTime = hour >= 0 && hour <= 24 && minute >= 0 && minute <= 59 && second >= 0 && second <= 59;
  if (!isDay || !isTime) {
    report("out of range", text);
    return std::nullopt;
  }
  return Date::fromCivil(year, month, day, hour, minute, second);
}
