#pragma once

#include <QtGlobal>

/// Stands wherever an index may be absent.
inline constexpr qint64 kNotFound = 0x7fffffffffffffff;
