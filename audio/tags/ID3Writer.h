#pragma once

#include <QByteArray>

#include "audio/tags/MP3InfoTag.h"

/// The bytes of a tag, in each version: id3.org's ID3v1, id3v2-00 (2.2), id3v2.3.0, id3v2.4.0-structure. All
/// frames go out, also those that nobody here understands, then the pictures; no padding, no extended header.
/// One thread; the tag outlives the writer.
class ID3Writer {
 public:
  explicit ID3Writer(const MP3InfoTag &written) : tag(written) {}

  /// A block of 128 bytes; texts are cut to their fields.
  QByteArray dataForID3v11() const;
  /// A whole tag; null if it, or a frame of it, is larger than its size field can tell.
  QByteArray dataForID3v22() const;
  QByteArray dataForID3V23orV24(bool isVersion24) const;

  /// Whether version 2.4 gets synch-safe sizes of frames, as its document wants; true. One flag for all tags.
  static void setWriteSynchSafeSizesInV24(bool synchSafe);
  static bool writeSynchSafeSizesInV24();

 private:
  const MP3InfoTag &tag;
};
