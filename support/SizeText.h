#pragma once

#include <QString>

/// A number of bytes as people read it, in powers of 1000 and the user's own way of writing numbers: "3.4
/// MB", "900 bytes". Any thread.
QString sizeText(qint64 bytes);
