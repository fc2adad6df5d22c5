#include "keeper/library/Refusal.h"

#include <cmath>

namespace refusal {

ScriptError error(qint64 number, const QString &message) {
  return {number, u"Music Keeper got an error: "_qs + message, {}};
}
ScriptError cannotGet(const QString &what) {
  return error(scriptErrors::kCannotGet, u"Can't get %1."_qs.arg(what));
}
ScriptError readOnly(const QString &term) {
  return error(scriptErrors::kAccessNotAllowed, u"Can't set %1: access not allowed."_qs.arg(term));
}
ScriptError unfit(const QString &term, const QString &why) {
  return error(scriptErrors::kCannotSet,
               u"Can't set %1 to that%2."_qs.arg(term, why.isEmpty() ? why : u": "_qs + why));
}
ScriptError notUnderstood(const QString &verb) {
  return error(scriptErrors::kNotUnderstood, u"That doesn't understand the %1 message."_qs.arg(verb));
}
ScriptError fileNotFound(const QString &path) {
  return error(scriptErrors::kFileNotFound, u"File %1 wasn't found."_qs.arg(path));
}

}  // namespace refusal

std::optional<QString> textOfValue(const ScriptValue &value) {
  if (value.is(ScriptValue::Type::Text)) return value.text();
  if (value.is(ScriptValue::Type::Integer)) return QString::number(value.integer());
  if (value.is(ScriptValue::Type::Real)) return QString::number(value.real());
  if (value.is(ScriptValue::Type::Boolean)) return value.boolean() ? u"true"_qs : u"false"_qs;
  return {};
}

std::optional<double> realOfValue(const ScriptValue &value) {
  if (value.isNumber()) return std::isfinite(value.number()) ? std::optional(value.number()) : std::nullopt;
  if (!value.is(ScriptValue::Type::Text)) return {};
  bool isNumber = false;
  const double number = value.text().trimmed().toDouble(&isNumber);
  return isNumber && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

std::optional<qint64> wholeOfValue(const ScriptValue &value) {
  if (value.is(ScriptValue::Type::Integer)) return value.integer();
  const std::optional<double> real = realOfValue(value);
  if (!real || std::abs(*real) >= 9.0e15) return {};
  return std::llround(*real);
}

std::optional<bool> flagOfValue(const ScriptValue &value) {
  if (value.is(ScriptValue::Type::Boolean)) return value.boolean();
  if (!value.is(ScriptValue::Type::Text)) return {};
  if (value.text().compare(u"true"_qs, Qt::CaseInsensitive) == 0) return true;
  if (value.text().compare(u"false"_qs, Qt::CaseInsensitive) == 0) return false;
  return {};
}

std::optional<QString> pathOfValue(const ScriptValue &value) {
  QString path;
  if (value.is(ScriptValue::Type::File)) path = value.file().path;
  if (value.is(ScriptValue::Type::Text)) path = value.text();
  if (!path.startsWith(u'/')) return {};
  while (path.size() > 1 && path.endsWith(u'/')) path.chop(1);
  return path;
}
