#pragma once

#include <QStringView>
#include <optional>

#include "values/Date.h"

/// The moment that a property list's date text names, such as "2008-02-29T12:00:00Z": 20 characters of which
/// the year, month, day, hour, minute and second are read by place; what stands between them is not looked
/// at. Days and hours beyond their month or day run on. Nothing, and a line on the platform's console, for a
/// text of another length or a field out of range. Any thread.
std::optional<Date> plistDateValue(QStringView text);
