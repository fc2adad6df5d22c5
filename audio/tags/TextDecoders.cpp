#include "audio/tags/TextDecoders.h"

#include <QStringDecoder>

#include "audio/ByteView.h"
#include "audio/TagError.h"
#include "support/BMLog.h"

namespace {

constexpr qint32 kUTF8 = 3;
constexpr quint8 kFirstPrintable = 32;

QString latin1(QByteArrayView bytes) {
  return bytes.isEmpty() ? u""_qs : QString::fromLatin1(bytes);
}

QString utf16(ByteView bytes) {
  const bool isLittle = bytes.hasAt(0, "\xFF\xFE");
  const qint64 first = isLittle || bytes.hasAt(0, "\xFE\xFF") ? 2 : 0;
  const qint64 units = (bytes.size() - first) / 2;
  if (units <= 0) return u""_qs;
  QString text(units, Qt::Uninitialized);
  for (qint64 unit = 0; unit < units; ++unit) {
    const quint16 value = bytes.u16(first + unit * 2);
    text[unit] = QChar(isLittle ? quint16(value << 8 | value >> 8) : value);
  }
  return text;
}

bool isOutside(QByteArrayView data, qint64 start, qint64 length) {
  return start < 0 || length < 0 || start > data.size() || length > data.size() - start;
}

/// The UTF-16 text at an offset; `maxLength` becomes the number of bytes used.
QString wideText(ByteView data, qint64 offset, qint64 &maxLength) {
  qint64 length = 0;
  while (length < maxLength && offset + length < data.size() - 2 && data.u16(offset + length) != 0) {
    length += 2;
  }
  maxLength = length + 2;
  return length > 0 ? utf16(data.slice(offset, length)) : QString();
}

}  // namespace

namespace id3text {

QString utf8(QByteArrayView bytes) {
  if (bytes.isEmpty()) return u""_qs;
  using Flag = QStringConverter::Flag;
  QStringDecoder decoder(QStringDecoder::Utf8, Flag::Stateless | Flag::ConvertInitialBom);
  const QString text = decoder(bytes);
  return decoder.hasError() ? QString() : text;
}

quint32 getSynchSafeIntInAtOffset(QByteArrayView data, qint64 offset) {
  return ByteView(data).synchSafe(offset);
}

QString id3v1StringInAtOffsetMaxLength(QByteArrayView data, qint64 offset, qint64 maxLength) {
  QByteArrayView bytes = ByteView(data).slice(offset, maxLength).bytes();
  const qsizetype end = bytes.indexOf('\0');
  if (end >= 0) bytes.truncate(end);
  while (!bytes.isEmpty() && quint8(bytes.back()) <= kFirstPrintable) bytes.chop(1);
  if (bytes.isEmpty()) return {};
  const QString text = utf8(bytes);
  // Every byte has a character in ISO Latin-1, so that no third encoding is ever asked.
  return text.isNull() ? latin1(bytes) : text;
}

QString id3v22StringInAtOffsetEncodingMaxLength(QByteArrayView data, qint64 offset, quint8 encoding,
                                                qint64 maxLength) {
  ByteView bytes = ByteView(data).slice(offset, maxLength);
  if (encoding == 0) {
    const qsizetype end = bytes.bytes().indexOf('\0');
    return latin1(end < 0 ? bytes.bytes() : bytes.bytes().first(end));
  }
  if (bytes.size() >= 2 && bytes.u16(bytes.size() - 2) == 0) bytes = bytes.slice(0, bytes.size() - 2);
  return utf16(bytes);
}

QString id3v23StringInAtOffsetEncodingMaxLength(QByteArrayView data, qint64 offset, qint32 encoding,
                                                qint64 &maxLength) {
  if (encoding < 0 || encoding > kUTF8 || offset < 0 || offset >= data.size()) return {};
  if (encoding == 1 || encoding == 2) return wideText(data, offset, maxLength);
  const QByteArrayView room = ByteView(data).slice(offset, maxLength).bytes();
  const qsizetype end = room.indexOf('\0');
  const QByteArrayView bytes = end < 0 ? room : room.first(end);
  if (bytes.size() < maxLength) maxLength = bytes.size() + 1;
  if (bytes.isEmpty()) return {};
  return encoding == kUTF8 ? utf8(bytes) : latin1(bytes);
}

QStringList id3v23StringsInWithinRange(QByteArrayView data, qint64 start, qint64 length) {
  if (isOutside(data, start, length)) {
    BMLog("id3v23StringsIn <%@ %p: %u bytes> @ %@", "Data", static_cast<const void *>(data.data()),
          data.size(), QStringLiteral("{%1, %2}").arg(start).arg(length));
    return {};
  }
  if (length == 0) return {};
  const qint64 end = start + length;
  qint32 encoding = ByteView(data).u8(start);
  if (encoding >= kFirstPrintable) {
    BMLog("id3v23StringsIn encoding %d (no encoding byte)", encoding);
    encoding = 0;
  } else {
    if (encoding > kUTF8) {
      BMLog("id3v23StringsIn encoding %d treated as encoding 0", encoding);
      encoding = 0;
    }
    ++start;
  }
  QStringList texts;
  while (start < end) {
    qint64 used = end - start;
    const QString text = id3v23StringInAtOffsetEncodingMaxLength(data, start, encoding, used);
    if (!text.isNull()) texts.append(text);
    if (texts.size() > kMostTexts) throw TagError("too many texts");
    start += used;
  }
  return texts;
}

TextBlock textBlockInWithinRange(QByteArrayView data, qint64 start, qint64 length) {
  constexpr qint64 kShortest = 7, kLanguage = 3;
  if (length < kShortest || isOutside(data, start, length)) return {};
  const ByteView bytes(data);
  const qint64 end = start + length;
  const qint32 encoding = bytes.u8(start);
  if (encoding > kUTF8) {
    BMLog("textBlockIn encoding %d", encoding);
    return {};
  }
  const auto next = [&](qint64 &at) {
    qint64 used = end - at;
    const QString text = id3v23StringInAtOffsetEncodingMaxLength(data, at, encoding, used);
    at += used;
    return text.isEmpty() || text.front().isNull() ? QString() : text;
  };
  TextBlock block;
  const QString language = utf8(bytes.slice(start + 1, kLanguage).bytes());
  if (language.size() == kLanguage) block.lang = language;
  qint64 at = start + 1 + kLanguage;
  block.desc = next(at);
  while (at < end && bytes.u8(at) == 0) ++at;
  if (at < end) block.text = next(at);
  return block.text.isNull() ? TextBlock() : block;
}

}  // namespace id3text
