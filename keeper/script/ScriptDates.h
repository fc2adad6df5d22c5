#pragma once

#include <QString>
#include <QStringList>
#include <optional>

#include "keeper/script/ScriptValue.h"

/// Dates in the machine's own time zone.
namespace scriptDates {

/// January to December, and Sunday to Saturday, in lower case.
const QStringList &months();
const QStringList &weekdays();

/// The value of a component: "year", "month" and "weekday" as constants, "day", "hours", "minutes",
/// "seconds", "time" (seconds of the day); nothing for another word.
std::optional<ScriptValue> component(Date date, const QString &term);
/// The date with a component changed; the 31st of a month of 30 days runs on into the next. False for a word
/// that is no component that can be written; -1700 for a value that is no number.
[[nodiscard]] bool setComponent(Date &date, const QString &term, const ScriptValue &value);

/// "Wednesday, 1 May 2024 at 13:04:05".
QString longText(Date date);
/// "2024-05-01T13:04:05".
QString isoText(Date date);
/// What a form of `isoText` says; nothing if the text has another form.
std::optional<Date> fromIsoText(const QString &text);

/// Seconds that local time is ahead of Greenwich's at a moment.
qint64 secondsToGreenwich(Date date);

}  // namespace scriptDates
