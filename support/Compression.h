#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <optional>

/// Gzip by way of a temporary file, in the temporary folder or else in the home folder. Any thread; none
/// throws.

/// The gzip form of the bytes, or the bytes themselves if that failed.
QByteArray compressedData(QByteArrayView bytes);

/// The bytes a gzip form holds; plain bytes come back as they are. A form that is cut or damaged gives what
/// could be read of it. Nothing for empty data or when no temporary file could be made.
std::optional<QByteArray> copyDecompressedData(QByteArrayView bytes);

/// As `copyDecompressedData`, or the bytes themselves where that gave nothing.
QByteArray decompressedData(QByteArrayView bytes);
