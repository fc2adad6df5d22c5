#include "ctl/JsonWriter.h"

#include <QLocale>
#include <cmath>
#include <ostream>

namespace {

constexpr size_t kFlushBytes = 1 << 16;

/// A place in a tree that is being written: the container, and the entry that comes next.
struct Place {
  Value container;
  qsizetype next = 0;
};

}  // namespace

JsonWriter::~JsonWriter() {
  flush();
}

void JsonWriter::flush() {
  out.write(buffer.data(), std::streamsize(buffer.size()));
  buffer.clear();
}

void JsonWriter::endLine() {
  buffer += '\n';
  flush();
}

void JsonWriter::separate() {
  if (buffer.size() > kFlushBytes) flush();
  if (!behindKey && !filled.empty()) {
    if (filled.back()) buffer += ", ";
    filled.back() = true;
  }
  behindKey = false;
}

void JsonWriter::begin(char bracket) {
  separate();
  buffer += bracket;
  filled.push_back(false);
}

void JsonWriter::end(char bracket) {
  filled.pop_back();
  buffer += bracket;
}

void JsonWriter::key(QStringView text) {
  separate();
  quoted(text);
  buffer += ": ";
  behindKey = true;
}

void JsonWriter::value(const Value &tree) {
  if (!tree.isContainer()) return leaf(tree);
  std::vector<Place> places;
  const auto enter = [&](const Value &container) {
    begin(container.type() == Value::Type::Array ? '[' : '{');
    places.push_back({container});
  };
  enter(tree);
  while (!places.empty()) {
    Place &place = places.back();
    const bool isArray = place.container.type() == Value::Type::Array;
    const qsizetype size = isArray ? place.container.toArray().size() : place.container.toDictionary().size();
    if (place.next == size) {
      end(isArray ? ']' : '}');
      places.pop_back();
      continue;
    }
    const qsizetype index = place.next++;
    if (!isArray) key(place.container.toDictionary().begin()[index].key.text());
    const Value member =
        isArray ? place.container.toArray().at(index) : place.container.toDictionary().begin()[index].value;
    if (member.isContainer()) {
      enter(member);
    } else {
      leaf(member);
    }
  }
}

void JsonWriter::leaf(const Value &leaf) {
  separate();
  switch (leaf.type()) {
    case Value::Type::Boolean:
      buffer += leaf.toBool() ? "true" : "false";
      break;
    case Value::Type::Integer:
      buffer += std::to_string(leaf.toInteger());
      break;
    case Value::Type::Real: {
      const QByteArray digits = QByteArray::number(leaf.toDouble(), 'g', QLocale::FloatingPointShortest);
      buffer += std::isfinite(leaf.toDouble()) ? digits.toStdString() : "null";
      if (QByteArrayView("0123456789").contains(digits.back()) && !digits.contains('.') &&
          !digits.contains('e'))
        buffer += ".0";
      break;
    }
    case Value::Type::Text:
      quoted(leaf.toText());
      break;
    case Value::Type::Date:
      quoted(leaf.toDate()->toIsoText());
      break;
    case Value::Type::Data:
      buffer += '"' + leaf.toData().toBase64().toStdString() + '"';
      break;
    default:
      buffer += "null";
  }
}

void JsonWriter::quoted(QStringView text) {
  buffer += '"';
  qsizetype plainFrom = 0;
  const auto escape = [&](qsizetype index, const QByteArray &written) {
    buffer += text.sliced(plainFrom, index - plainFrom).toUtf8().toStdString();
    buffer += written.toStdString();
    plainFrom = index + 1;
  };
  for (qsizetype i = 0; i < text.size(); ++i) {
    const QChar unit = text[i];
    if (unit.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
      ++i;
    } else if (unit == u'"' || unit == u'\\') {
      escape(i, QByteArray("\\") + unit.toLatin1());
    } else if (unit == u'\n') {
      escape(i, "\\n");
    } else if (unit < u' ' || unit == u'\x7f' || unit.isSurrogate()) {
      escape(i, "\\u" + QByteArray::number(unit.unicode(), 16).rightJustified(4, '0'));
    }
  }
  buffer += text.sliced(plainFrom).toUtf8().toStdString();
  buffer += '"';
}
