#pragma once

#include <QByteArray>
#include <QtEndian>

/// Appends a whole number in big-endian order, as wide as its type.
template <class Number>
void appendBigEndian(QByteArray &bytes, Number value) {
  const Number swapped = qToBigEndian(value);
  bytes.append(reinterpret_cast<const char *>(&swapped), sizeof swapped);
}
