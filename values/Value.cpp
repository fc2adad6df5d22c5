#include "values/Value.h"

#include <cmath>
#include <limits>

Value::Value(::Array value) {
  if (!value.isNull()) held = std::move(value);
}

Value::Value(::Dictionary value) {
  if (!value.isNull()) held = std::move(value);
}

namespace {

constexpr qint64 kLargest = std::numeric_limits<qint64>::max();
constexpr qint64 kSmallest = std::numeric_limits<qint64>::min();

qint64 saturated(double number) {
  if (std::isnan(number)) return 0;
  if (number >= 9223372036854775808.0) return kLargest;
  if (number <= -9223372036854775808.0) return kSmallest;
  return qint64(number);
}

/// The whole number at the front of a text, behind white space and one sign.
qint64 leadingInteger(const QString &text) {
  qsizetype place = 0;
  while (place < text.size() && text[place].isSpace()) ++place;
  bool negative = false;
  if (place < text.size() && (text[place] == u'-' || text[place] == u'+')) negative = text[place++] == u'-';
  qint64 number = 0;
  for (; place < text.size() && text[place] >= u'0' && text[place] <= u'9'; ++place) {
    const int digit = text[place].unicode() - u'0';
    if (number > (kLargest - digit) / 10) return negative ? kSmallest : kLargest;
    number = number * 10 + digit;
  }
  return negative ? -number : number;
}

double leadingDouble(const QString &text) {
  const QString trimmed = text.trimmed();
  qsizetype length = 0;
  while (length < trimmed.size() && QStringView(u"+-.0123456789eE").contains(trimmed[length])) ++length;
  for (; length > 0; --length) {
    bool isNumber = false;
    const double number = trimmed.left(length).toDouble(&isNumber);
    if (isNumber) return number;
  }
  return 0.0;
}

bool truthOf(const QString &text) {
  const QString trimmed = text.trimmed();
  if (trimmed.isEmpty()) return false;
  if (QStringView(u"YyTt").contains(trimmed.front())) return true;
  qsizetype place = trimmed.front() == u'-' || trimmed.front() == u'+' ? 1 : 0;
  while (place < trimmed.size() && trimmed[place] == u'0') ++place;
  return place < trimmed.size() && trimmed[place] >= u'1' && trimmed[place] <= u'9';
}

}  // namespace

bool Value::toBool() const {
  switch (type()) {
    case Type::Boolean: return std::get<bool>(held);
    case Type::Integer: return std::get<qint64>(held) != 0;
    case Type::Real: return std::get<double>(held) != 0.0;
    case Type::Text: return truthOf(std::get<QString>(held));
    default: return false;
  }
}

qint64 Value::toInteger() const {
  switch (type()) {
    case Type::Boolean: return std::get<bool>(held) ? 1 : 0;
    case Type::Integer: return std::get<qint64>(held);
    case Type::Real: return saturated(std::get<double>(held));
    case Type::Text: return leadingInteger(std::get<QString>(held));
    default: return 0;
  }
}

double Value::toDouble() const {
  switch (type()) {
    case Type::Boolean: return std::get<bool>(held) ? 1.0 : 0.0;
    case Type::Integer: return double(std::get<qint64>(held));
    case Type::Real: return std::get<double>(held);
    case Type::Text: return leadingDouble(std::get<QString>(held));
    default: return 0.0;
  }
}

const QString &Value::toText() const {
  static const QString none;
  const QString *text = std::get_if<QString>(&held);
  return text ? *text : none;
}

QByteArray Value::toData() const {
  const QByteArray *data = std::get_if<QByteArray>(&held);
  return data ? *data : QByteArray();
}

const ::Array &Value::toArray() const {
  static const ::Array none;
  const ::Array *array = std::get_if<::Array>(&held);
  return array ? *array : none;
}

const ::Dictionary &Value::toDictionary() const {
  static const ::Dictionary none;
  const ::Dictionary *dictionary = std::get_if<::Dictionary>(&held);
  return dictionary ? *dictionary : none;
}
