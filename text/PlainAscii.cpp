#include "text/PlainAscii.h"

#include "platform/Platform.h"

namespace {

bool isAscii(const QString &text) {
  char16_t seen = 0;
  for (const QChar unit : text) seen |= unit.unicode();
  return seen < 0x80;
}

}  // namespace

QString plainASCIIString(const QString &text) {
  if (isAscii(text)) return text;
  const std::optional<QByteArray> ascii = platform().unicode->foldedToAscii(text);
  return ascii ? QString::fromLatin1(*ascii) : text;
}

QString precomposedBMString(const QString &text) {
  return isAscii(text) ? text : platform().unicode->composed(text);
}
