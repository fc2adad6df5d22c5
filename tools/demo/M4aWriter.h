#pragma once

#include "tools/demo/SongTags.h"

/// A whole M4A file of silence: AAC LC of 44100 Hz, mono, with the tags of an iTunes file. The audio takes
/// 172 bytes a second; `bitRate` is the rate that the file states. The duration is rounded up to a frame.
SongFileBytes makeM4a(const SongTags &tags, int bitRate, int milliseconds);
