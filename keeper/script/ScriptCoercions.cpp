#include "keeper/script/ScriptCoercions.h"

#include <QFileInfo>

#include "keeper/script/ScriptDates.h"
#include "keeper/script/ScriptDescriptions.h"
#include "keeper/script/ScriptError.h"
#include "keeper/script/ScriptNumbers.h"

using namespace scriptDescriptions;
using Type = ScriptValue::Type;

namespace {

/// The name of the volume in paths with colons.
const QString kVolume = QStringLiteral("Disk");

QString colonPath(const QString &path) {
  QString text = path;
  text.replace(u':', u'\n').replace(u'/', u':').replace(u'\n', u'/');
  return kVolume + text;
}

QString slashPath(const QString &text) {
  if (text.startsWith(u'/')) return text;
  const qsizetype volumeEnd = text.indexOf(u':');
  if (volumeEnd < 0) return u'/' + text;
  QString path = text.mid(volumeEnd);
  return path.replace(u'/', u'\n').replace(u':', u'/').replace(u'\n', u':');
}

QString capitalised(const QString &term) {
  return term.first(1).toUpper() + term.mid(1);
}

/// Text of a value, which may hold one list many times over.
class TextMaker {
 public:
  explicit TextMaker(const ScriptTextRules &rules_) : rules(rules_) {}

  void append(const ScriptValue &value) {
    if (value.is(Type::List)) {
      appendList(value.items());
    } else {
      text += ofLeaf(value);
    }
    if (text.size() > scriptCoercions::kLongestText) throw tooLarge();
  }

  QString text;

 private:
  void appendList(const ScriptListItems &items) {
    visited += qint64(items.size()) + 1;
    if (visited > scriptCoercions::kMostVisited) throw tooLarge();
    if (++depth > scriptCoercions::kDeepest) throw tooDeep();
    for (size_t i = 0; i < items.size(); ++i) {
      if (i > 0) text += rules.delimiters.first();
      append(items[i]);
    }
    --depth;
  }

  static QString ofLeaf(const ScriptValue &value) {
    switch (value.type()) {
      case Type::Text:
        return value.text();
      case Type::Integer:
        return QString::number(value.integer());
      case Type::Real:
        return scriptNumbers::realText(value.real());
      case Type::Boolean:
        return value.boolean() ? QStringLiteral("true") : QStringLiteral("false");
      case Type::Missing:
        return QStringLiteral("missing value");
      case Type::Date:
        return scriptDates::longText(value.date());
      case Type::File:
        return colonPath(value.file().path);
      case Type::Constant:
        return classOf(value) == u"constant" ? value.term() : capitalised(value.term());
      case Type::ClassName:
        return value.term();
      default:
        throw cannotMake(value, QStringLiteral("text"));
    }
  }

  const ScriptTextRules &rules;
  int depth = 0;
  qint64 visited = 0;
};

/// «class isot» is data that `as text` spells.
QByteArray isoData(const ScriptValue &value) {
  if (!value.is(Type::Date)) throw cannotMake(value, QStringLiteral("«class isot»"));
  return scriptDates::isoText(value.date()).toLatin1();
}

ScriptValue toDate(const ScriptValue &value) {
  if (value.is(Type::Date)) return value;
  if (value.is(Type::Text)) {
    if (const auto date = scriptDates::fromIsoText(value.text())) return *date;
  }
  throw cannotMake(value, QStringLiteral("date"));
}

ScriptValue toAlias(const ScriptValue &value) {
  ScriptFile file = scriptCoercions::toFile(value);
  if (!QFileInfo::exists(file.path)) {
    throw ScriptError{
        scriptErrors::kFileNotFound, QStringLiteral("File %1 wasn't found.").arg(describe(value)), {}};
  }
  file.isAlias = true;
  return file;
}

ScriptValue toRecord(const ScriptValue &value) {
  if (value.is(Type::Record)) return value;
  throw cannotMake(value, QStringLiteral("record"));
}

}  // namespace

QString scriptCoercions::toText(const ScriptValue &value, const ScriptTextRules &rules) {
  if (value.is(Type::Text)) return value.text();
  if (value.is(Type::Data)) return QString::fromLatin1(value.data());
  TextMaker maker(rules);
  maker.append(value);
  return maker.text;
}

ScriptValue scriptCoercions::toNumber(const ScriptValue &value) {
  switch (value.type()) {
    case Type::Integer:
    case Type::Real:
      return value;
    case Type::Boolean:
      return value.boolean() ? 1 : 0;
    case Type::Text:
      if (const auto number = scriptNumbers::fromText(value.text())) return *number;
      break;
    case Type::Constant: {
      const qsizetype month = scriptDates::months().indexOf(value.term());
      if (month >= 0) return qint64(month) + 1;
      const qsizetype weekday = scriptDates::weekdays().indexOf(value.term());
      if (weekday >= 0) return qint64(weekday) + 1;
      break;
    }
    case Type::List:
      if (value.items().size() == 1 && !value.items().front().is(Type::List)) {
        return toNumber(value.items().front());
      }
      break;
    default:
      break;
  }
  throw cannotMake(value, QStringLiteral("number"));
}

qint64 scriptCoercions::toInteger(const ScriptValue &value) {
  const ScriptValue number = toNumber(value);
  return number.is(Type::Integer) ? number.integer() : scriptNumbers::rounded(number.real());
}

double scriptCoercions::toReal(const ScriptValue &value) {
  return toNumber(value).number();
}

bool scriptCoercions::toBoolean(const ScriptValue &value) {
  if (value.is(Type::Boolean)) return value.boolean();
  if (value.is(Type::Integer)) return value.integer() != 0;
  if (value.is(Type::Text)) {
    if (value.text().compare(u"true", Qt::CaseInsensitive) == 0) return true;
    if (value.text().compare(u"false", Qt::CaseInsensitive) == 0) return false;
  }
  throw cannotMake(value, QStringLiteral("boolean"));
}

ScriptValue scriptCoercions::toList(const ScriptValue &value) {
  if (value.is(Type::List)) return value;
  ScriptListItems items;
  if (value.is(Type::Record)) {
    for (const auto &[name, field] : value.fields()) items.push_back(field);
  } else {
    items.push_back(value);
  }
  return ScriptValue::list(std::move(items));
}

ScriptFile scriptCoercions::toFile(const ScriptValue &value) {
  if (value.is(Type::File)) return {value.file().path, false};
  if (value.is(Type::Text) && !value.text().isEmpty()) return {slashPath(value.text()), false};
  throw cannotMake(value, QStringLiteral("file"));
}

ScriptValue scriptCoercions::coerce(const ScriptValue &value, const QString &type,
                                    const ScriptTextRules &rules) {
  if (type == u"text" || type == u"string" || type == u"unicode text") return toText(value, rules);
  if (type == u"integer") {
    try {
      return scriptNumbers::whole(toInteger(value));
    } catch (const ScriptError &error) {
      if (error.number != scriptErrors::kCannotMake) throw;
      throw cannotMake(value, type);
    }
  }
  if (type == u"real") return toReal(value);
  if (type == u"number") return toNumber(value);
  if (type == u"boolean") return toBoolean(value);
  if (type == u"list") return toList(value);
  if (type == u"record") return toRecord(value);
  if (type == u"date") return toDate(value);
  if (type == u"alias") return toAlias(value);
  if (type == u"file" || type == u"posix file" || type == u"«class furl»") return toFile(value);
  if (type == u"«class isot»") return isoData(value);
  if (classOf(value) == type) return value;
  throw cannotMake(value, type);
}
