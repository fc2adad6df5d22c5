#include "ctl/RequestArguments.h"

void RequestArguments::fail(const char *expected) {
  if (problem.isEmpty())
    problem = QStringLiteral("argument %1 must be %2").arg(taken).arg(QString::fromUtf8(expected));
}

const Value &RequestArguments::next(bool *exists) {
  *exists = taken < arguments.size();
  return arguments.at(taken++);
}

QString RequestArguments::error() const {
  if (hasFailed() || taken == arguments.size()) return problem;
  return QStringLiteral("%1 arguments are %2 too many").arg(arguments.size()).arg(arguments.size() - taken);
}

std::optional<QString> RequestArguments::text() {
  bool exists = false;
  const Value &value = next(&exists);
  if (exists && value.isNull()) return std::nullopt;
  if (!value.isText()) {
    fail("a text or null");
    return std::nullopt;
  }
  return value.toText();
}

QStringList RequestArguments::texts() {
  bool exists = false;
  const Value &value = next(&exists);
  const Array &list = value.toArray();
  QStringList result;
  for (const Value &member : list) {
    if (!member.isText()) fail("a list of texts");
    result << member.toText();
  }
  if (value.type() != Value::Type::Array) fail("a list of texts");
  return result;
}

QChar RequestArguments::character() {
  bool exists = false;
  const QString &text = next(&exists).toText();
  if (text.size() == 1) return text[0];
  fail("one character");
  return {};
}

std::optional<QByteArray> RequestArguments::bytes() {
  const std::optional<QString> text = this->text();
  if (!text) return std::nullopt;
  QByteArray digits = text->toLatin1();
  digits.removeIf([](char digit) { return digit == ' '; });
  const bool isGood =
      digits.size() % 2 == 0 && digits.size() <= text->size() &&
      std::all_of(digits.begin(), digits.end(), [](char digit) { return isxdigit(uchar(digit)); });
  if (!isGood) fail("bytes in hexadecimal");
  return isGood ? QByteArray::fromHex(digits) : QByteArray();
}

double RequestArguments::number() {
  bool exists = false;
  const Value &value = next(&exists);
  if (!value.isNumber() || value.type() == Value::Type::Boolean) fail("a number");
  return value.toDouble();
}

bool RequestArguments::boolean() {
  bool exists = false;
  const Value &value = next(&exists);
  if (value.type() != Value::Type::Boolean) fail("true or false");
  return value.toBool();
}
