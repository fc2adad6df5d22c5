#pragma once

#include <QByteArray>
#include <QtGlobal>

/// A square PNG picture of `side` pixels: a disc of one colour on another, as a record's cover would have it.
/// Colours are 0xRRGGBB. Depends on the arguments alone.
QByteArray makeCover(int side, quint32 ground, quint32 disc);
