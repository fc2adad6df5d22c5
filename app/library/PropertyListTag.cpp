#include "app/library/PropertyListTag.h"

#include <algorithm>

FoundTag searchTag(const char *at, const char *end) {
  const void *close = std::memchr(at, '>', size_t(end - at));
  FoundTag found{close ? static_cast<const char *>(close) : end, PropertyListTag::Other};
  const char *behind = close ? found.end + 1 : end;
  if (behind - at > 1 && behind - at <= kLongestKnownTag) {
    char padded[kLongestKnownTag] = {};
    std::copy(at, behind, padded);
    found.tag = knownTag(padded).tag;
  }
  const auto isAscii = [](char byte) { return static_cast<unsigned char>(byte) < 0x80; };
  if (!std::all_of(at, behind, isAscii)) found.tag = PropertyListTag::NotAscii;
  return found;
}
