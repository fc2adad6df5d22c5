#pragma once

#include <QString>

/// The text in 7-bit ASCII: any script in Latin letters, without accents; what has no ASCII form is dropped.
/// The text itself if the platform cannot convert it. Any thread.
QString plainASCIIString(const QString &text);

/// The text in canonical composition; the text itself if there is none. Any thread.
QString precomposedBMString(const QString &text);
