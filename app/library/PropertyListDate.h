#pragma once

#include <QByteArrayView>
#include <QStringView>
#include <optional>

#include "values/Date.h"

/// The moment that the text of a date element names: by `plistDateValue`, else by the calendar parse below.
/// `bytes` are UTF-8 or ASCII as they stand in the file, without character references.
std::optional<Date> propertyListDate(QByteArrayView bytes);
std::optional<Date> propertyListDate(QStringView text);

/// Reads "%Y-%m-%dT%H:%M:%SZ" the way of strptime: a number may stand behind white space and be shorter than
/// its field, fields must be in range (hour 0 to 23, second 0 to 60), and what follows is not looked at.
std::optional<Date> calendarDate(QStringView text);
