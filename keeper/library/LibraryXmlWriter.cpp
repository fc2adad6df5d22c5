#include "keeper/library/LibraryXmlWriter.h"

#include <QLocale>
#include <cmath>

#include "values/Date.h"

namespace {

constexpr qsizetype kPiece = 1 << 20;
constexpr int kLettersInLine = 60;

using Type = RecordCursor::Type;

/// What a character is written as; null for itself.
const char *escapeOf(char16_t unit) {
  switch (unit) {
    case u'&':
      return "&#38;";
    case u'<':
      return "&#60;";
    case u'>':
      return "&#62;";
    // Bare, a reader would make a line end of it.
    case u'\r':
      return "&#13;";
    case u'\t':
    case u'\n':
      return nullptr;
    // No XML can hold the other controls.
    default:
      return unit < 0x20 || unit == 0xFFFE || unit == 0xFFFF ? "" : nullptr;
  }
}

}  // namespace

LibraryXmlWriter::LibraryXmlWriter(const RecordKeys &keys_, std::function<void(QByteArrayView)> sink_)
    : keys(keys_), sink(std::move(sink_)) {
  buffer.reserve(kPiece + kPiece / 4);
}

void LibraryXmlWriter::begin() {
  buffer +=
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
      "<!DOCTYPE plist PUBLIC \"-//Apple Computer//DTD PLIST 1.0//EN\" "
      "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
      "<plist version=\"1.0\">\n";
}

void LibraryXmlWriter::finish() {
  buffer += "</plist>\n";
  sink(buffer);
  buffer.clear();
}

void LibraryXmlWriter::handOn() {
  if (buffer.size() < kPiece) return;
  sink(buffer);
  buffer.resize(0);
}

void LibraryXmlWriter::indent() {
  buffer.append(depth, '\t');
}

void LibraryXmlWriter::openDictionary() {
  indent();
  buffer += "<dict>\n";
  ++depth;
}

void LibraryXmlWriter::openArray() {
  indent();
  buffer += "<array>\n";
  ++depth;
}

void LibraryXmlWriter::close(const char *tag) {
  --depth;
  indent();
  buffer += tag;
  handOn();
}

void LibraryXmlWriter::key(const QString &text) {
  indent();
  buffer += "<key>";
  utf16(text);
  buffer += "</key>";
}

void LibraryXmlWriter::keyOfContainer(const QString &text) {
  key(text);
  buffer += '\n';
}

void LibraryXmlWriter::integer(qint64 number) {
  buffer += "<integer>";
  buffer += QByteArray::number(number);
  buffer += "</integer>\n";
}

void LibraryXmlWriter::recordKey(quint32 number, bool isContainer) {
  if (keyTags.size() <= number) keyTags.resize(number + 1);
  QByteArray &tag = keyTags[number];
  if (tag.isEmpty()) {
    const qsizetype start = buffer.size();
    const int level = std::exchange(depth, 0);
    key(keys.key(number).text());
    depth = level;
    tag = buffer.sliced(start);
    buffer.resize(start);
  }
  indent();
  buffer += tag;
  if (isContainer) buffer += '\n';
}

void LibraryXmlWriter::entries(RecordCursor cursor, const std::function<bool(quint32)> &replace) {
  while (cursor.next()) {
    const quint32 number = cursor.keyNumber();
    if (cursor.type() == Type::Null || keys.key(number).isAbsent()) continue;
    if (replace && replace(number)) continue;
    const bool onOwnLines = cursor.type() >= Type::Data;
    recordKey(number, onOwnLines);
    value(cursor);
  }
}

void LibraryXmlWriter::members(RecordCursor cursor) {
  while (cursor.next()) {
    if (cursor.type() == Type::Null) continue;
    if (cursor.type() < Type::Data) indent();
    value(cursor);
  }
}

void LibraryXmlWriter::value(const RecordCursor &cursor) {
  switch (cursor.type()) {
    case Type::Array:
      openArray();
      members(RecordCursor::ofMembers(cursor.payload()));
      closeArray();
      break;
    case Type::Dictionary:
      openDictionary();
      entries(RecordCursor::ofEntries(cursor.payload()));
      closeDictionary();
      break;
    case Type::Data:
      data(cursor.payload());
      break;
    default:
      leaf(cursor);
  }
  handOn();
}

void LibraryXmlWriter::leaf(const RecordCursor &cursor) {
  switch (cursor.type()) {
    case Type::False:
      buffer += "<false/>\n";
      break;
    case Type::True:
      buffer += "<true/>\n";
      break;
    case Type::Integer:
      integer(cursor.integer());
      break;
    case Type::Real:
      buffer += "<real>";
      buffer += QByteArray::number(cursor.real(), 'g', QLocale::FloatingPointShortest);
      buffer += "</real>\n";
      break;
    case Type::Date:
      date(cursor.real());
      break;
    default:
      buffer += "<string>";
      if (cursor.type() == Type::Latin1)
        latin1(cursor.payload());
      else
        utf16(cursor.text());
      buffer += "</string>\n";
  }
}

void LibraryXmlWriter::latin1(QByteArrayView text) {
  qsizetype copied = 0;
  for (qsizetype at = 0; at < text.size(); ++at) {
    const uchar byte = uchar(text[at]);
    const char *escape = escapeOf(byte);
    if (!escape && byte < 0x80) continue;
    buffer.append(text.sliced(copied, at - copied));
    copied = at + 1;
    if (escape) {
      buffer += escape;
    } else {
      buffer += char(0xC0 | byte >> 6);
      buffer += char(0x80 | (byte & 0x3F));
    }
  }
  buffer.append(text.sliced(copied));
}

void LibraryXmlWriter::utf16(const QString &text) {
  QString plain;
  plain.reserve(text.size());
  for (const QChar unit : text) {
    if (const char *escape = escapeOf(unit.unicode()))
      plain += QLatin1String(escape);
    else
      plain += unit;
  }
  buffer += plain.toUtf8();
}

void LibraryXmlWriter::data(QByteArrayView bytes) {
  indent();
  buffer += "<data>\n";
  const QByteArray letters = bytes.toByteArray().toBase64();
  for (qsizetype at = 0; at < letters.size(); at += kLettersInLine) {
    indent();
    buffer += QByteArrayView(letters).sliced(at, qMin<qsizetype>(kLettersInLine, letters.size() - at));
    buffer += '\n';
  }
  indent();
  buffer += "</data>\n";
}

void LibraryXmlWriter::date(double seconds) {
  buffer += "<date>";
  buffer += Date{seconds}.toIsoText().toLatin1();
  buffer += "</date>\n";
}
