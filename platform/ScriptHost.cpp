#include "platform/ScriptHost.h"

#include <QLocale>
#include <algorithm>
#include <cmath>
#include <limits>

namespace {

using Limits = std::numeric_limits<qint32>;

qint32 saturated(double number) {
  if (std::isnan(number)) return 0;
  return qint32(std::clamp(std::round(number), double(Limits::min()), double(Limits::max())));
}

}  // namespace

ScriptDescriptor ScriptDescriptor::ofText(const QString &text) {
  ScriptDescriptor made;
  made.type = Type::Text;
  made.text = text;
  return made;
}

ScriptDescriptor ScriptDescriptor::ofInteger(qint64 integer) {
  ScriptDescriptor made;
  made.type = Type::Integer;
  made.integer = integer;
  return made;
}

ScriptDescriptor ScriptDescriptor::ofReal(double real) {
  ScriptDescriptor made;
  made.type = Type::Real;
  made.real = real;
  return made;
}

ScriptDescriptor ScriptDescriptor::ofBoolean(bool boolean) {
  ScriptDescriptor made;
  made.type = Type::Boolean;
  made.boolean = boolean;
  return made;
}

std::optional<QString> ScriptDescriptor::stringValue() const {
  switch (type) {
    case Type::Text:
      return text;
    case Type::Integer:
      return QString::number(integer);
    case Type::Real:
      return QString::number(real, 'g', QLocale::FloatingPointShortest);
    case Type::Boolean:
      return boolean ? QStringLiteral("true") : QStringLiteral("false");
    case Type::None:
    case Type::List:
      break;
  }
  return std::nullopt;
}

qint32 ScriptDescriptor::int32Value() const {
  switch (type) {
    case Type::Text:
      return saturated(text.trimmed().toDouble());
    case Type::Integer:
      return qint32(std::clamp<qint64>(integer, Limits::min(), Limits::max()));
    case Type::Real:
      return saturated(real);
    case Type::Boolean:
      return boolean ? 1 : 0;
    case Type::None:
    case Type::List:
      break;
  }
  return 0;
}
