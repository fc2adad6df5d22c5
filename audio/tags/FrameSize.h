#pragma once

#include <optional>

#include "audio/ByteView.h"

/// The size of the data of the version 2.3 or 2.4 frame at an offset of a tag's bytes, in bytes. Programs
/// have written plain sizes into version 2.4 and synch-safe ones into 2.3, so both readings are held against
/// what follows: the tag's end, another frame, or zeros. Of two possible ones `assumeSynchSafe` decides;
/// nothing if neither is. Id3.org, id3v2.4.0-structure, 4 and 6.2.
std::optional<qint64> frameSizeAt(ByteView tag, qint64 frame, bool assumeSynchSafe);
