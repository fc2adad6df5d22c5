#include "app/library/PropertyListTexts.h"

#include <QHashFunctions>
#include <QUtf8StringView>
#include <algorithm>
#include <bit>
#include <cstring>

#include "text/AmpersandCodes.h"

namespace {

constexpr quint64 kHighBits = 0x8080808080808080u;
constexpr quint64 kLowBits = 0x0101010101010101u;
constexpr quint64 kAmpersands = kLowBits * quint64('&');

/// Non-zero if one of eight bytes is an ampersand or no ASCII. A byte behind an ampersand may count as one
/// too.
quint64 unusual(quint64 eight) {
  const quint64 difference = eight ^ kAmpersands;
  return (eight | ((difference - kLowBits) & ~difference)) & kHighBits;
}

bool same(QByteArrayView a, QByteArrayView b) {
  return a.size() == b.size() && std::memcmp(a.data(), b.data(), size_t(a.size())) == 0;
}

size_t hashOf(QByteArrayView bytes) {
  return qHashBits(bytes.data(), size_t(bytes.size()));
}

/// The text of valid UTF-8. A byte order mark at the front is a character like others.
QString fromUtf8(QByteArrayView bytes) {
  static constexpr char kMark[] = "\xEF\xBB\xBF";
  if (bytes.startsWith(QByteArrayView(kMark, 3))) return QChar(0xFEFF) + QString::fromUtf8(bytes.sliced(3));
  return QString::fromUtf8(bytes);
}

constexpr int kMostRepeats = 64;
constexpr int kFewestRepeats = -16;
constexpr int kRepeatWorth = 4;

}  // namespace

bool isPlainText(QByteArrayView bytes) {
  const char *at = bytes.begin();
  quint64 found = 0;
  for (; bytes.end() - at >= 8; at += 8) {
    quint64 eight;
    std::memcpy(&eight, at, 8);
    found |= unusual(eight);
  }
  quint64 rest = 0;
  std::memcpy(&rest, at, size_t(bytes.end() - at));
  return (found | unusual(rest)) == 0;
}

PropertyListTexts::PropertyListTexts(qsizetype size)
    : keys(1024), texts(std::bit_ceil(size_t(std::clamp<qsizetype>(size / 1024, 64, 32768)))) {}

QString PropertyListTexts::decodeUncounted(QByteArrayView bytes) {
  if (!QUtf8StringView(bytes).isValidUtf8())
    return QStringLiteral("[NON-UTF8-%1]").arg(++counted.undecodable);
  return stringByReplacingAmpersandCodes(fromUtf8(bytes));
}

QString PropertyListTexts::decode(QByteArrayView bytes) {
  ++counted.values;
  return isPlainText(bytes) ? QString::fromLatin1(bytes) : decodeUncounted(bytes);
}

QString PropertyListTexts::decodeShared(QByteArrayView bytes, KnownKey &key) {
  if (same(key.last.bytes, bytes)) {
    ++counted.values;
    return key.last.text;
  }
  // Where texts hardly repeat, only one in sixteen is looked for.
  if (key.repeats <= kFewestRepeats && (counted.values & 15) != 0) return decode(bytes);
  KnownText &known = texts[hashOf(bytes) & (texts.size() - 1)];
  if (same(known.bytes, bytes)) {
    key.repeats = qMin(key.repeats + kRepeatWorth, kMostRepeats);
    ++counted.values;
    known.bytes = bytes;  // nearer to what comes next, so more likely in the processor's cache
  } else {
    key.repeats = qMax(key.repeats - 1, kFewestRepeats);
    const qint64 undecodable = counted.undecodable;
    QString text = decode(bytes);
    if (counted.undecodable != undecodable) return text;
    known = {bytes, std::move(text)};
  }
  key.last = known;
  return known.text;
}

void PropertyListTexts::check(QByteArrayView bytes) {
  if (!QUtf8StringView(bytes).isValidUtf8()) ++counted.undecodable;
}

KnownKey &PropertyListTexts::key(QByteArrayView bytes, KnownKey &previous) {
  const size_t place = hashOf(bytes) & (keys.size() - 1);
  KnownKey &known = keys[place];
  if (!same(known.bytes, bytes)) {
    known = {};
    known.bytes = bytes;
    known.key = Key(QString::fromLatin1(bytes));
  }
  previous.next = quint32(place);
  return known;
}
