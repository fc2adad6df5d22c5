#pragma once

#include "tools/demo/DemoLibrary.h"

/// Writes a library file of `tracks` entries below `home`, in the place of the demo library's, with no song
/// file: for measurements. About 1.5 KB an entry; an artist for 40 entries, an album for 12, 5 % names
/// outside ASCII, 3 % copies of an entry not far before. Streams: holds little whatever the size. The same
/// seed and home give the same bytes. In the summary, `duplicateRows` counts the copies alone.
DemoSummary makeLargeLibrary(const QString &home, int tracks, quint64 seed);
