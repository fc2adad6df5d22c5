#include <QDateTime>
#include <QTimeZone>
#include <vector>

#include "support/Format.h"

namespace {

constexpr qsizetype kLongest = 100000;

QString dateText(Date date) {
  const double milliseconds = date.toUnix() * 1000.0;
  if (!(milliseconds > -9e15 && milliseconds < 9e15)) return QString::number(date.seconds);
  return QDateTime::fromMSecsSinceEpoch(qint64(milliseconds), Qt::UTC)
      .toString(QStringLiteral("yyyy-MM-dd HH:mm:ss '+0000'"));
}

QString leafText(const Value &value) {
  switch (value.type()) {
    case Value::Type::Null:
      return QStringLiteral("(null)");
    case Value::Type::Boolean:
      return value.toBool() ? QStringLiteral("1") : QStringLiteral("0");
    case Value::Type::Integer:
      return QString::number(value.toInteger());
    case Value::Type::Real:
      return QString::number(value.toDouble(), 'g', QLocale::FloatingPointShortest);
    case Value::Type::Text:
      return value.toText();
    case Value::Type::Date:
      return dateText(*value.toDate());
    case Value::Type::Data:
      return u'<' + QString::fromLatin1(value.toData().left(kLongest / 2).toHex()) + u'>';
    default:
      return {};
  }
}

/// A container whose members are being written.
struct Open {
  Value container;
  qsizetype next = 0;
};

/// Writes the next member's beginning; false when there is none left.
bool writeNext(Open &open, QString &text, Value &member) {
  const bool isArray = open.container.type() == Value::Type::Array;
  const qsizetype size = isArray ? open.container.toArray().size() : open.container.toDictionary().size();
  if (open.next >= size) return false;
  if (isArray) {
    if (open.next > 0) text += u", ";
    member = open.container.toArray().at(open.next);
  } else {
    const DictionaryEntry &entry = open.container.toDictionary().begin()[open.next];
    text += (open.next > 0 ? u"; "_qs : QString()) + entry.key.text() + u" = "_qs;
    member = entry.value;
  }
  ++open.next;
  return true;
}

}  // namespace

QString description(const Value &value) {
  if (!value.isContainer()) return leafText(value);
  QString text;
  std::vector<Open> stack;
  const auto begin = [&](const Value &container) {
    text += container.type() == Value::Type::Array ? u'(' : u'{';
    stack.push_back({container});
  };
  begin(value);
  while (!stack.empty()) {
    if (text.size() > kLongest) return text.left(kLongest) + u'…';
    Value member;
    if (!writeNext(stack.back(), text, member)) {
      text += stack.back().container.type() == Value::Type::Array ? u')' : u'}';
      stack.pop_back();
    } else if (member.isContainer()) {
      begin(member);
    } else {
      text += leafText(member);
    }
  }
  return text;
}
