#include "platform/FileAddress.h"

#include <QStringDecoder>

namespace {

int hexDigit(char16_t character) {
  if (character >= u'0' && character <= u'9') return character - u'0';
  const char16_t lower = char16_t(character | 0x20);
  return lower >= u'a' && lower <= u'f' ? lower - u'a' + 10 : -1;
}

/// The address behind its scheme and host, up to "#" or "?".
QStringView escapedPath(QStringView address) {
  const qsizetype colon = address.indexOf(u':');
  QStringView rest = colon < 0 ? address : address.sliced(colon + 1);
  if (rest.startsWith(u"//")) {
    const qsizetype slash = rest.indexOf(u'/', 2);
    rest = slash < 0 ? QStringView() : rest.sliced(slash);
  }
  for (qsizetype place = 0; place < rest.size(); ++place) {
    if (rest[place] == u'#' || rest[place] == u'?') return rest.first(place);
  }
  return rest;
}

/// The bytes of a path with its escapes decoded; null for a bad escape.
QByteArray decoded(QStringView path) {
  QByteArray bytes = QByteArray("");
  bytes.reserve(path.size());
  for (qsizetype place = 0; place < path.size();) {
    if (path[place] != u'%') {
      const qsizetype begin = place;
      while (place < path.size() && path[place] != u'%') ++place;
      bytes += path.sliced(begin, place - begin).toUtf8();
      continue;
    }
    if (place + 2 >= path.size()) return {};
    const int high = hexDigit(path[place + 1].unicode());
    const int low = hexDigit(path[place + 2].unicode());
    if (high < 0 || low < 0) return {};
    bytes += char(high * 16 + low);
    place += 3;
  }
  return bytes;
}

bool isUnescaped(char byte) {
  return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9') ||
         QByteArrayView("-._~!$&'()*+,=:@/").contains(byte);
}

}  // namespace

QString pathOfFileAddress(const QString &address) {
  const QByteArray bytes = decoded(escapedPath(address));
  QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
  QString path = decoder(bytes);
  if (bytes.isNull() || decoder.hasError()) return {};
  while (path.size() > 1 && path.endsWith(u'/')) path.chop(1);
  return path;
}

QString fileAddressOfPath(const QString &path) {
  QString address = QStringLiteral("file://");
  for (const char byte : path.toUtf8()) {
    if (isUnescaped(byte)) {
      address += QLatin1Char(byte);
    } else {
      address += QString::asprintf("%%%02X", unsigned(quint8(byte)));
    }
  }
  return address;
}
