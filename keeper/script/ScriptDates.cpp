#include "keeper/script/ScriptDates.h"

#include <QDateTime>
#include <QLocale>
#include <cmath>

#include "keeper/script/ScriptCoercions.h"

namespace {

/// Within the calendar, whatever the number.
QDateTime local(Date date) {
  const double unixSeconds = std::isfinite(date.seconds) ? date.toUnix() : 0.0;
  return QDateTime::fromMSecsSinceEpoch(qint64(std::floor(std::clamp(unixSeconds, -1e11, 1e12))) * 1000);
}

/// Years, months and days that run over are carried into what follows.
Date fromLocal(qint64 year, qint64 month, qint64 day, qint64 secondOfDay) {
  year = std::clamp<qint64>(year, 1, 9999);
  const QDate first(int(year), 1, 1);
  const QDate date = first.addMonths(int(std::clamp<qint64>(month, 1, 12)) - 1)
                         .addDays(std::clamp<qint64>(day, -1'000'000, 1'000'000) - 1);
  const qint64 second = std::clamp<qint64>(secondOfDay, -1'000'000'000, 1'000'000'000);
  const qint64 days = qint64(std::floor(double(second) / 86'400.0));
  const QDateTime moment(date.addDays(days),
                         QTime::fromMSecsSinceStartOfDay(int(second - days * 86'400) * 1000));
  return Date::fromUnix(double(moment.toSecsSinceEpoch()));
}

qint64 secondOfDay(const QTime &time) {
  return time.msecsSinceStartOfDay() / 1000;
}

}  // namespace

const QStringList &scriptDates::months() {
  static const QStringList names = QStringLiteral(
                                       "january february march april may june july august september october "
                                       "november december")
                                       .split(u' ');
  return names;
}

const QStringList &scriptDates::weekdays() {
  static const QStringList names =
      QStringLiteral("sunday monday tuesday wednesday thursday friday saturday").split(u' ');
  return names;
}

std::optional<ScriptValue> scriptDates::component(Date date, const QString &term) {
  const QDateTime moment = local(date);
  const QDate day = moment.date();
  const QTime time = moment.time();
  if (term == u"year") return day.year();
  if (term == u"month") return ScriptConstant{months().at(day.month() - 1)};
  if (term == u"weekday") return ScriptConstant{weekdays().at(day.dayOfWeek() % 7)};
  if (term == u"day") return day.day();
  if (term == u"hours") return time.hour();
  if (term == u"minutes") return time.minute();
  if (term == u"seconds") return time.second();
  if (term == u"time") return secondOfDay(time);
  return std::nullopt;
}

bool scriptDates::setComponent(Date &date, const QString &term, const ScriptValue &value) {
  static const QStringList parts = QStringLiteral("year month day hours minutes seconds time").split(u' ');
  if (!parts.contains(term)) return false;
  const qint64 number = scriptCoercions::toInteger(value);
  const QDateTime moment = local(date);
  const QDate day = moment.date();
  const qint64 second = secondOfDay(moment.time());
  const auto limited = [number](qint64 unit) {
    return std::clamp<qint64>(number, -1'000'000, 1'000'000) * unit;
  };
  if (term == u"year") date = fromLocal(number, day.month(), day.day(), second);
  if (term == u"month") date = fromLocal(day.year(), number, day.day(), second);
  if (term == u"day") date = fromLocal(day.year(), day.month(), number, second);
  if (term == u"hours") date = fromLocal(day.year(), day.month(), day.day(), second % 3600 + limited(3600));
  if (term == u"minutes") {
    const qint64 rest = second - second / 60 % 60 * 60;
    date = fromLocal(day.year(), day.month(), day.day(), rest + limited(60));
  }
  if (term == u"seconds")
    date = fromLocal(day.year(), day.month(), day.day(), second - second % 60 + limited(1));
  if (term == u"time") date = fromLocal(day.year(), day.month(), day.day(), number);
  return true;
}

QString scriptDates::longText(Date date) {
  return QLocale::c().toString(local(date), QStringLiteral("dddd, d MMMM yyyy 'at' HH:mm:ss"));
}

QString scriptDates::isoText(Date date) {
  return local(date).toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss"));
}

std::optional<Date> scriptDates::fromIsoText(const QString &text) {
  const QDateTime moment = QDateTime::fromString(text, QStringLiteral("yyyy-MM-ddTHH:mm:ss"));
  if (!moment.isValid()) return std::nullopt;
  return Date::fromUnix(double(moment.toSecsSinceEpoch()));
}

qint64 scriptDates::secondsToGreenwich(Date date) {
  return local(date).offsetFromUtc();
}
