#include "audio/mp4/MP4Layout.h"

#include <algorithm>

namespace {

using atomwalk::kNotFoundOffset;
using atomwalk::Source;
using Place = MP4Layout::Place;

constexpr quint32 kMdat = 0x6d646174, kMoof = 0x6d6f6f66, kMoov = 0x6d6f6f76, kStco = 0x7374636f,
                  kCo64 = 0x636f3634;
/// The containers on the way to a table of chunk offsets.
constexpr quint32 kWay[] = {kMoov, 0x7472616b, 0x6d646961, 0x6d696e66, 0x7374626c};
constexpr quint64 kHeader = 8;

/// The atoms of a range, one behind the other.
std::vector<Place> placesIn(Source &source, quint64 start, quint64 end) {
  std::vector<Place> places;
  end = std::min(end, source.length());
  for (quint64 offset = start; end >= kHeader && offset <= end - kHeader;) {
    Place place{0, offset, 0};
    place.size = atomwalk::sizeOfAtomInAtOffsetName(source, offset, &place.name);
    places.push_back(place);
    if (place.size > end - offset) break;
    offset += place.size;
  }
  return places;
}

/// How many tables lie in a range; one of 64 bits counts as many.
int tablesIn(Source &source, quint64 start, quint64 end) {
  constexpr int kMany = 2;
  int count = 0;
  for (const Place &place : placesIn(source, start, end)) {
    if (place.name == kStco) ++count;
    if (place.name == kCo64 || place.name == kMoof) count += kMany;
    const bool isOnWay = std::find(std::begin(kWay), std::end(kWay), place.name) != std::end(kWay);
    const quint64 room = end - std::min(end, place.offset);
    if (isOnWay) count += tablesIn(source, place.offset + kHeader, place.offset + std::min(place.size, room));
  }
  return std::min(count, kMany);
}

}  // namespace

MP4Layout::MP4Layout(Source source) : places(placesIn(source, 0, source.length())) {
  const std::pair<const char16_t *, const char16_t *> kInside[] = {{u"moov", u"1"}, {u"moov:udta", u"1:1"}};
  for (const auto &[path, indexes] : kInside) {
    const quint64 offset = atomwalk::offsetToAtomInAtNamePathIndexed(source, QString::fromUtf16(path),
                                                                     QString::fromUtf16(indexes));
    if (offset == kNotFoundOffset) return;
    const quint64 size = atomwalk::sizeOfAtomInAtOffsetName(source, offset, nullptr);
    const std::vector<Place> inside = placesIn(source, offset + kHeader, offset + size);
    places.insert(places.end(), inside.begin(), inside.end());
  }
  metaOffset = atomwalk::offsetToAtomInAtNamePathIndexed(source, QStringLiteral("moov:udta:meta"),
                                                         QStringLiteral("1:1:1"));
  if (metaOffset != kNotFoundOffset)
    metaSize = atomwalk::sizeOfAtomInAtOffsetName(source, metaOffset, nullptr);
}

std::optional<quint64> MP4Layout::endOfMeta() const {
  return metaOffset == kNotFoundOffset ? std::nullopt : std::optional(metaOffset + metaSize);
}

std::vector<Place> MP4Layout::audio() const {
  std::vector<Place> audio;
  std::copy_if(places.begin(), places.end(), std::back_inserter(audio),
               [](const Place &place) { return place.name == kMdat; });
  return audio;
}

bool MP4Layout::hasOtherTables(Source source) {
  return tablesIn(source, 0, source.length()) > 1;
}
