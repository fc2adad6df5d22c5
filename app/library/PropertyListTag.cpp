#include "app/library/PropertyListTag.h"

#include <algorithm>
#include <cstring>

namespace {

/// A tag by the text between its brackets. In the order of their number in a library.
template <size_t N>
bool isHere(const char *at, const char (&text)[N]) {
  return std::memcmp(at, text, N - 1) == 0;
}

/// The longest text compared below.
constexpr qsizetype kLongest = 10;

/// A known tag at a place with at least `kLongest` bytes behind it.
FoundTag knownTag(const char *at) {
  using enum PropertyListTag;
  switch (at[1]) {
    case '/':
      if (isHere(at, "</key>")) return {Other, at + 5};
      if (isHere(at, "</string>")) return {Other, at + 8};
      if (isHere(at, "</integer>")) return {Other, at + 9};
      if (isHere(at, "</dict>")) return {CloseContainer, at + 6};
      if (isHere(at, "</date>")) return {Other, at + 6};
      if (isHere(at, "</array>")) return {CloseContainer, at + 7};
      break;
    case 'k':
      if (isHere(at, "<key>")) return {Key, at + 4};
      break;
    case 's':
      if (isHere(at, "<string>")) return {String, at + 7};
      break;
    case 'i':
      if (isHere(at, "<integer>")) return {Integer, at + 8};
      break;
    case 'd':
      if (isHere(at, "<date>")) return {Date, at + 5};
      if (isHere(at, "<dict>")) return {OpenDictionary, at + 5};
      break;
    case 't':
      if (isHere(at, "<true/>")) return {True, at + 6};
      break;
    case 'f':
      if (isHere(at, "<false/>")) return {False, at + 7};
      break;
    case 'a':
      if (isHere(at, "<array>")) return {OpenArray, at + 6};
      break;
    default:
      break;
  }
  return {};
}

}  // namespace

FoundTag tagAt(const char *at, const char *end) {
  if (end - at >= kLongest) {
    const FoundTag known = knownTag(at);
    if (known.end) return known;
  }
  const void *close = std::memchr(at, '>', size_t(end - at));
  FoundTag found{PropertyListTag::Other, close ? static_cast<const char *>(close) : end, true};
  const char *behind = close ? found.end + 1 : end;
  if (behind - at > 1 && behind - at <= kLongest) {
    char padded[kLongest] = {};
    std::copy(at, behind, padded);
    found.tag = knownTag(padded).tag;
  }
  found.isAscii = std::all_of(at, behind, [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
  return found;
}
