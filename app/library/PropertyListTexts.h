#pragma once

#include <QByteArrayView>
#include <QString>
#include <vector>

#include "app/library/PropertyListReader.h"
#include "values/Key.h"

/// True if every byte is ASCII and none an ampersand: such bytes are their text.
bool isPlainText(QByteArrayView bytes);

/// A text as it stands in the file's bytes, and decoded.
struct KnownText {
  QByteArrayView bytes;
  QString text;
};

/// A key as it last stood in the file, with what was learned about it.
struct KnownKey {
  /// In the file's bytes.
  QByteArrayView bytes;
  Key key;
  /// The place of the key that followed it last time.
  quint32 next = 0;
  /// How far its texts were worth looking for among earlier ones; grows with each that was there.
  int repeats = 0;
  /// Its last text that was looked for: tracks of one album stand together.
  KnownText last;
};

/// Decodes the texts between the tags of one property list and counts them. Remembers, in bounded tables,
/// keys and texts by their bytes, so that a repeated one is neither decoded nor stored again; the bytes must
/// outlive this object. One thread.
class PropertyListTexts {
 public:
  /// Tables fit for a list of `size` bytes.
  explicit PropertyListTexts(qsizetype size);

  /// The text of some bytes, at least one. Null only if the character references have none.
  QString decode(QByteArrayView bytes);
  /// The same, shared with an equal text met before where the texts of `key` repeat often enough.
  QString decodeShared(QByteArrayView bytes, KnownKey &key);
  /// Counts plain bytes that the caller reads itself.
  void countPlain() { ++counted.values; }
  /// Counts bytes that nobody needs decoded.
  void skip(QByteArrayView bytes) {
    ++counted.values;
    unsigned char all = 0;
    for (const char *at = bytes.begin(); at < bytes.end() && all < 0x80; ++at)
      all |= static_cast<unsigned char>(*at);
    if (all >= 0x80) check(bytes);
  }

  /// The key of some plain bytes; `previous` is the one before it. Valid until the next call but one.
  KnownKey &key(QByteArrayView bytes, KnownKey &previous);
  /// The key that most likely follows.
  KnownKey &likelyAfter(const KnownKey &key) { return keys[key.next]; }
  /// A place for keys that are not remembered.
  KnownKey &anyKey() { return other; }

  const PropertyListCounts &counts() const { return counted; }

 private:
  QString decodeUncounted(QByteArrayView bytes);
  void check(QByteArrayView bytes);

  std::vector<KnownKey> keys;
  std::vector<KnownText> texts;
  KnownKey other;
  PropertyListCounts counted{.isManual = true};
};
