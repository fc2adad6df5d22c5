#pragma once

#include <QByteArrayView>
#include <QString>

/// Bytes of the Mac OS Roman encoding as a text; every byte has its character, so that it never fails.
QString textOfMacRoman(QByteArrayView bytes);
