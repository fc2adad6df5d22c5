#pragma once

#include <QByteArrayView>

/// The tags that mean something to the property-list reader; every other one is `Other`.
enum class PropertyListTag : unsigned char {
  Other,
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

/// A tag where the reader found it.
struct FoundTag {
  PropertyListTag tag = PropertyListTag::Other;
  /// The place of its ">", or the end of the bytes.
  const char *end = nullptr;
  bool isAscii = true;
};

/// The tag that begins at `at`, which is a "<" or `end`. Tags are compared whole: one with attributes or
/// spaces is `Other`.
FoundTag tagAt(const char *at, const char *end);
