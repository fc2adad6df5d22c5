#pragma once

#include <QtGlobal>
#include <cstring>

/// The tags that mean something to the property-list reader; every other one is `Other`.
enum class PropertyListTag : unsigned char {
  Other,
  NotAscii,
  Key,
  String,
  Integer,
  Date,
  True,
  False,
  OpenDictionary,
  OpenArray,
  CloseContainer,
};

/// A tag where the reader found it. Small enough to be returned in registers, which the reader's speed needs.
struct FoundTag {
  /// The place of its ">", or the end of the bytes.
  const char *end = nullptr;
  PropertyListTag tag = PropertyListTag::Other;
};

/// Looks for the ">" of any tag. `at` is a "<" or `end`.
FoundTag searchTag(const char *at, const char *end);

/// No tag that is looked for here is longer.
inline constexpr qsizetype kLongestKnownTag = 10;

/// A tag that a library is full of, at a "<" with at least `kLongestKnownTag` bytes from there on; without an
/// end if there is none.
inline FoundTag knownTag(const char *at) {
  using enum PropertyListTag;
  const auto isHere = [at](const auto &text) { return std::memcmp(at + 1, text, sizeof text - 1) == 0; };
  switch (at[1]) {
    case '/':
      if (isHere("/key>")) return {at + 5, Other};
      if (isHere("/string>")) return {at + 8, Other};
      if (isHere("/integer>")) return {at + 9, Other};
      if (isHere("/dict>")) return {at + 6, CloseContainer};
      if (isHere("/date>")) return {at + 6, Other};
      return isHere("/array>") ? FoundTag{at + 7, CloseContainer} : FoundTag{};
    case 'k':
      return isHere("key>") ? FoundTag{at + 4, Key} : FoundTag{};
    case 's':
      return isHere("string>") ? FoundTag{at + 7, String} : FoundTag{};
    case 'i':
      return isHere("integer>") ? FoundTag{at + 8, Integer} : FoundTag{};
    case 'd':
      if (isHere("date>")) return {at + 5, Date};
      return isHere("dict>") ? FoundTag{at + 5, OpenDictionary} : FoundTag{};
    case 't':
      return isHere("true/>") ? FoundTag{at + 6, True} : FoundTag{};
    case 'f':
      return isHere("false/>") ? FoundTag{at + 7, False} : FoundTag{};
    case 'a':
      return isHere("array>") ? FoundTag{at + 6, OpenArray} : FoundTag{};
    default:
      return {};
  }
}

/// The tag that begins at `at`, which is a "<" or `end`. Tags are compared whole: one with attributes or
/// spaces is `Other`.
inline FoundTag tagAt(const char *at, const char *end) {
  const FoundTag known = end - at >= kLongestKnownTag ? knownTag(at) : FoundTag{};
  return known.end ? known : searchTag(at, end);
}
