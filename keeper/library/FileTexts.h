#pragma once

#include <QString>

#include "values/Value.h"

class MP3InfoTag;

/// What a file's tag says beyond the texts that `AudioInfoTag` speaks of: album artist, composer, grouping,
/// comment, disc, and the names to sort by (ID3v2.3 section 4, and the items of an MP4 file's "ilst").
namespace fileTexts {

/// Sets the library's keys for what is there.
void addFromTag(const MP3InfoTag &tag, const Dictionary &record);
void addFromMP4File(const QString &path, const Dictionary &record);
/// The four letters of an MP4 file's first sample entry: "mp4a", "alac", "drms"; empty if there is none.
QByteArray mp4Codec(const QString &path);

}  // namespace fileTexts
