#include "keeper/script/ScriptDescriptions.h"

#include "keeper/script/ScriptDates.h"
#include "keeper/script/ScriptNumbers.h"
#include "keeper/script/ScriptObject.h"

namespace {

using Type = ScriptValue::Type;

constexpr qsizetype kLongest = 120;
constexpr int kDeepest = 4;

QString shortened(const QString &text) {
  return text.size() <= kLongest ? text : text.first(kLongest) + QStringLiteral("…");
}

QString describeAt(const ScriptValue &value, int depth);

QString describeList(const ScriptListItems &items, int depth) {
  QString text = QStringLiteral("{");
  for (size_t i = 0; i < items.size() && text.size() < kLongest && depth < kDeepest; ++i) {
    if (i > 0) text += QStringLiteral(", ");
    text += describeAt(items[i], depth + 1);
  }
  const bool cut = text.size() >= kLongest || (depth >= kDeepest && !items.empty());
  return shortened(text) + (cut ? QStringLiteral("…}") : QStringLiteral("}"));
}

QString describeRecord(const ScriptRecordFields &fields, int depth) {
  QString text = QStringLiteral("{");
  for (size_t i = 0; i < fields.size() && text.size() < kLongest && depth < kDeepest; ++i) {
    if (i > 0) text += QStringLiteral(", ");
    text += fields[i].first + QStringLiteral(":") + describeAt(fields[i].second, depth + 1);
  }
  return shortened(text) + QStringLiteral("}");
}

QString describeAt(const ScriptValue &value, int depth) {
  switch (value.type()) {
    case Type::NoValue:
      return QStringLiteral("no value");
    case Type::Missing:
      return QStringLiteral("missing value");
    case Type::Boolean:
      return value.boolean() ? QStringLiteral("true") : QStringLiteral("false");
    case Type::Integer:
      return QString::number(value.integer());
    case Type::Real:
      return scriptNumbers::realText(value.real());
    case Type::Text:
      return u'"' + shortened(value.text()) + u'"';
    case Type::Date:
      return QStringLiteral("date \"%1\"").arg(scriptDates::longText(value.date()));
    case Type::File:
      return QStringLiteral("file \"%1\"").arg(shortened(value.file().path));
    case Type::Data:
      return QStringLiteral("«data»");
    case Type::Constant:
    case Type::ClassName:
      return shortened(value.term());
    case Type::List:
      return describeList(value.items(), depth);
    case Type::Record:
      return describeRecord(value.fields(), depth);
    case Type::Object:
      return value.object()->className();
    case Type::Reference:
      return QStringLiteral("a reference");
    case Type::Instance:
      return QStringLiteral("«script»");
  }
  return {};
}

}  // namespace

QString scriptDescriptions::classOf(const ScriptValue &value) {
  switch (value.type()) {
    case Type::NoValue:
      return QStringLiteral("no value");
    case Type::Missing:
    case Type::ClassName:
      return QStringLiteral("class");
    case Type::Boolean:
      return QStringLiteral("boolean");
    case Type::Integer:
      return QStringLiteral("integer");
    case Type::Real:
      return QStringLiteral("real");
    case Type::Text:
      return QStringLiteral("text");
    case Type::Date:
      return QStringLiteral("date");
    case Type::File:
      return value.file().isAlias ? QStringLiteral("alias") : QStringLiteral("«class furl»");
    case Type::Data:
      return QStringLiteral("data");
    case Type::Constant:
      if (scriptDates::months().contains(value.term())) return QStringLiteral("month");
      if (scriptDates::weekdays().contains(value.term())) return QStringLiteral("weekday");
      return QStringLiteral("constant");
    case Type::List:
      return QStringLiteral("list");
    case Type::Record:
      return QStringLiteral("record");
    case Type::Object:
      return value.object()->className();
    case Type::Reference:
      return QStringLiteral("reference");
    case Type::Instance:
      return QStringLiteral("script");
  }
  return {};
}

QString scriptDescriptions::describe(const ScriptValue &value) {
  return describeAt(value, 0);
}

ScriptError scriptDescriptions::cannotMake(const ScriptValue &value, const QString &type) {
  return {scriptErrors::kCannotMake,
          QStringLiteral("Can't make %1 into type %2.").arg(describe(value), type),
          {}};
}

ScriptError scriptDescriptions::cannotGet(const QString &what) {
  return {scriptErrors::kCannotGet, QStringLiteral("Can't get %1.").arg(shortened(what)), {}};
}

ScriptError scriptDescriptions::cannotGet(const QString &what, const ScriptValue &container) {
  return cannotGet(QStringLiteral("%1 of %2").arg(shortened(what), describe(container)));
}

ScriptError scriptDescriptions::tooLarge() {
  return {scriptErrors::kTooLarge, QStringLiteral("A value is larger than is allowed."), {}};
}

ScriptError scriptDescriptions::tooDeep() {
  return {scriptErrors::kStackOverflow, QStringLiteral("Stack overflow."), {}};
}
