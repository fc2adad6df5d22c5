#pragma once

#include <QByteArrayView>
#include <QtGlobal>

/// The checksum under which stored data is known: the reflected polynomial 0xEDB88320, begun at 0 and not
/// inverted at the end, so not the usual CRC-32. 0 for no bytes. Any thread.
quint32 CRC(QByteArrayView bytes);
