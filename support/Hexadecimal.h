#pragma once

#include <QByteArrayView>
#include <QString>

/// Two capital digits for each byte: "00FF".
QString hexadecimalStringRepresentation(QByteArrayView bytes);

/// The same with a space between bytes: "00 FF".
QString hexadecimalStringRepresentationWithSpaces(QByteArrayView bytes);
