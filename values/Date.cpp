#include "values/Date.h"

#include <cmath>

namespace {

/// Days from 1970-01-01 to the given civil date.
qint64 daysFromCivil(qint64 year, int month, int day) {
  year -= month <= 2 ? 1 : 0;
  const qint64 era = (year >= 0 ? year : year - 399) / 400;
  const qint64 yearOfEra = year - era * 400;
  const qint64 dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
  return era * 146097 + yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear - 719468;
}

struct Civil {
  qint64 year;
  int month, day;
};

Civil civilFromDays(qint64 days) {
  days += 719468;
  const qint64 era = (days >= 0 ? days : days - 146096) / 146097;
  const qint64 dayOfEra = days - era * 146097;
  const qint64 yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
  const qint64 dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
  const int shifted = int((5 * dayOfYear + 2) / 153);
  const int month = shifted + (shifted < 10 ? 3 : -9);
  return {yearOfEra + era * 400 + (month <= 2 ? 1 : 0), month, int(dayOfYear - (153 * shifted + 2) / 5 + 1)};
}

}  // namespace

Date Date::fromCivil(int year, int month, int day, int hour, int minute, int second) {
  const qint64 days = daysFromCivil(year, month, day);
  return fromUnix(double(days) * 86400.0 + hour * 3600.0 + minute * 60.0 + second);
}

QString Date::toIsoText() const {
  const double whole = std::floor(toUnix());
  if (!(std::abs(whole) < 8.0e15)) return QStringLiteral("0000-00-00T00:00:00Z");
  const qint64 total = qint64(whole);
  const qint64 days = total >= 0 ? total / 86400 : (total - 86399) / 86400;
  const int rest = int(total - days * 86400);
  const Civil civil = civilFromDays(days);
  return QString::asprintf("%04lld-%02d-%02dT%02d:%02d:%02dZ", civil.year, civil.month, civil.day, rest / 3600,
                           rest / 60 % 60, rest % 60);
}
