#include "app/library/PropertyListDate.h"

#include <QString>

#include "text/PlistDate.h"

namespace {

/// The number of two digits; a large one if they are none.
int twoDigits(const char *at) {
  const unsigned tens = static_cast<unsigned char>(at[0]) - unsigned('0');
  const unsigned ones = static_cast<unsigned char>(at[1]) - unsigned('0');
  return tens <= 9 && ones <= 9 ? int(tens * 10 + ones) : 1000;
}

/// The usual form with every field in range; nothing for all others, which are not wrong for that.
std::optional<Date> usualDate(QByteArrayView bytes) {
  if (bytes.size() != 20) return {};
  const char *at = bytes.data();
  if (at[4] != '-' || at[7] != '-' || at[10] != 'T' || at[13] != ':' || at[16] != ':' || at[19] != 'Z')
    return {};
  const int century = twoDigits(at), year = twoDigits(at + 2), month = twoDigits(at + 5);
  const int day = twoDigits(at + 8), hour = twoDigits(at + 11), minute = twoDigits(at + 14);
  const int second = twoDigits(at + 17);
  const bool usual = century < 100 && year < 100 && century + year > 0 && month >= 1 && month <= 12 &&
                     day >= 1 && day <= 31 && hour <= 24 && minute <= 59 && second <= 59;
  if (!usual) return {};
  return Date::fromCivil(century * 100 + year, month, day, hour, minute, second);
}

/// Takes one field off the front of the text: up to `digits` digits, then the literal.
std::optional<int> takeField(QStringView &text, int digits, int smallest, int largest, QChar literal) {
  while (!text.isEmpty() && text.front().isSpace()) text = text.sliced(1);
  int number = 0, taken = 0;
  for (; taken < digits && taken < text.size() && text[taken] >= u'0' && text[taken] <= u'9'; ++taken) {
    number = number * 10 + (text[taken].unicode() - u'0');
  }
  if (taken == 0 || number < smallest || number > largest) return {};
  if (taken >= text.size() || text[taken] != literal) return {};
  text = text.sliced(taken + 1);
  return number;
}

}  // namespace

std::optional<Date> calendarDate(QStringView text) {
  const auto year = takeField(text, 4, 0, 9999, u'-');
  const auto month = year ? takeField(text, 2, 1, 12, u'-') : year;
  const auto day = month ? takeField(text, 2, 1, 31, u'T') : month;
  const auto hour = day ? takeField(text, 2, 0, 23, u':') : day;
  const auto minute = hour ? takeField(text, 2, 0, 59, u':') : hour;
  const auto second = minute ? takeField(text, 2, 0, 60, u'Z') : minute;
  if (!second) return {};
  return Date::fromCivil(*year, *month, *day, *hour, *minute, *second);
}

std::optional<Date> propertyListDate(QStringView text) {
  const std::optional<Date> date = plistDateValue(text);
  return date ? date : calendarDate(text);
}

std::optional<Date> propertyListDate(QByteArrayView bytes) {
  const std::optional<Date> date = usualDate(bytes);
  return date ? date : propertyListDate(QString::fromUtf8(bytes));
}
