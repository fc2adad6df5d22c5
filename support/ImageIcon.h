#pragma once

#include <QByteArray>
#include <QByteArrayView>

/// The picture as a PNG that fits the size in pixels, with a border of half a pixel; for bytes that are no
/// picture, the picture of unreadable artwork. No bytes only if that is missing too.
QByteArray imageIconNoLargerThan(QByteArrayView picture, double width, double height);
