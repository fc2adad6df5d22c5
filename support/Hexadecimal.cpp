#include "support/Hexadecimal.h"

QString hexadecimalStringRepresentation(QByteArrayView bytes) {
  return QString::fromLatin1(QByteArray::fromRawData(bytes.data(), bytes.size()).toHex().toUpper());
}

QString hexadecimalStringRepresentationWithSpaces(QByteArrayView bytes) {
  return QString::fromLatin1(QByteArray::fromRawData(bytes.data(), bytes.size()).toHex(' ').toUpper());
}
