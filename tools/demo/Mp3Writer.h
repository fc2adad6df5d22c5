#pragma once

#include "tools/demo/SongTags.h"

/// A whole MP3 file of silence: an ID3v2.3 tag and MPEG-1 Layer III frames of 44100 Hz, mono. `bitRate` is
/// one of 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256 and 320; the duration is rounded up to a
/// frame.
SongFileBytes makeMp3(const SongTags &tags, int bitRate, int milliseconds);
