#include "audio/tags/TextEncoders.h"

#include <algorithm>

namespace id3text {

std::optional<QByteArray> exactLatin1(const QString &text) {
  if (std::any_of(text.begin(), text.end(), [](QChar c) { return c.unicode() > 0xFF; })) return {};
  return text.toLatin1();
}

QByteArray lossyLatin1(const QString &text) {
  return text.toLatin1();
}

QByteArray bigEndianUnicodeData(const QString &text) {
  QByteArray bytes("\xFE\xFF");
  bytes.reserve(2 + text.size() * 2);
  for (const QChar unit : text) {
    bytes += char(unit.row());
    bytes += char(unit.cell());
  }
  return bytes;
}

}  // namespace id3text
