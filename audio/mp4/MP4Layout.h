#pragma once

#include <optional>
#include <vector>

#include "audio/mp4/AtomWalk.h"

/// Where the atoms of a file are that a change of its tag can move: those of the file itself, of its movie
/// and of the movie's user data. Two equal layouts: nothing behind "meta" has moved.
class MP4Layout {
 public:
  struct Place {
    quint32 name = 0;
    quint64 offset = 0, size = 0;
    bool operator==(const Place &) const = default;
  };

  /// Throws TagError for atoms that cannot be.
  explicit MP4Layout(atomwalk::Source source);
  bool operator==(const MP4Layout &) const = default;

  /// The places behind the end of "moov:udta:meta"; nothing if there is none.
  std::optional<quint64> endOfMeta() const;
  /// The file's "mdat", in order.
  std::vector<Place> audio() const;
  /// True if something other than one table of 32-bit chunk offsets may point at audio.
  static bool hasOtherTables(atomwalk::Source source);

 private:
  std::vector<Place> places;
  quint64 metaOffset = atomwalk::kNotFoundOffset;
  quint64 metaSize = 0;
};
