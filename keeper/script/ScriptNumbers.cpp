#include "keeper/script/ScriptNumbers.h"

#include <cmath>

#include "keeper/script/ScriptError.h"

ScriptValue scriptNumbers::whole(qint64 number) {
  if (number > kLargestInteger || number < -kLargestInteger) return double(number);
  return number;
}

ScriptValue scriptNumbers::wholeIfItFits(double number) {
  if (std::trunc(number) == number && std::abs(number) <= double(kLargestInteger)) return qint64(number);
  return number;
}

QString scriptNumbers::realText(double number) {
  if (std::isnan(number)) return QStringLiteral("NaN");
  if (std::isinf(number)) return number < 0 ? QStringLiteral("-∞") : QStringLiteral("∞");
  const double size = std::abs(number);
  const bool plain = size == 0.0 || (size < 10'000.0 && size > 0.0001);
  QString digits = plain ? QString::number(number, 'g', 12) : QString::number(number, 'e', 11);
  QString exponent;
  if (!plain) {
    const qsizetype mark = digits.indexOf(u'e');
    const int power = QStringView(digits).mid(mark + 1).toInt();
    exponent = QStringLiteral("E%1%2").arg(power < 0 ? QChar(u'-') : QChar(u'+')).arg(std::abs(power));
    digits.truncate(mark);
    while (digits.endsWith(u'0')) digits.chop(1);
    if (digits.endsWith(u'.')) digits.append(u'0');
  }
  if (!digits.contains(u'.')) digits.append(QStringLiteral(".0"));
  return digits + exponent;
}

std::optional<ScriptValue> scriptNumbers::fromText(const QString &text) {
  const QString digits = text.trimmed();
  bool valid = !digits.isEmpty();
  for (const QChar unit : digits) {
    const bool known = (unit >= u'0' && unit <= u'9') || QStringView(u"+-.eE").contains(unit);
    valid = valid && known;
  }
  if (!valid) return std::nullopt;
  const qint64 integer = digits.toLongLong(&valid);
  if (valid) return whole(integer);
  const double real = digits.toDouble(&valid);
  if (valid) return real;
  return std::nullopt;
}

qint64 scriptNumbers::rounded(double number) {
  if (std::isnan(number)) throw ScriptError{scriptErrors::kCannotMake, QStringLiteral("Not a number."), {}};
  if (std::abs(number) >= 9.2e18) {
    throw ScriptError{scriptErrors::kNumberTooLarge, QStringLiteral("The number is too large."), {}};
  }
  return qint64(std::nearbyint(number));
}
