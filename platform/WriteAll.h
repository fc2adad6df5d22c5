#pragma once

#include <QByteArrayView>

/// Writes bytes to an open file, through interruptions and however many writes it takes. True once all are
/// written; else `errno` says why, and `written` (may be null) how many are. Any thread.
[[nodiscard]] bool writeAll(int handle, QByteArrayView bytes, qsizetype *written = nullptr);
