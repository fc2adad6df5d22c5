#pragma once

#include <QByteArrayView>
#include <QString>

/// Bytes of the Mac OS Roman encoding as a text; every byte has its character, so that it never fails.
QString textOfMacRoman(QByteArrayView bytes);
/// The first four bytes of a text in Mac OS Roman as a number, missing ones and characters it lacks as 0.
quint32 macRomanCode(QStringView text);
