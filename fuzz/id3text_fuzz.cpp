// Any bytes as the texts of frames: the first says which decoder, the second the place and the third the
// length. Every text read tells that it used something, and stays inside the bytes.

#include "audio/tags/TextDecoders.h"
#include "audio/tags/TextEncoders.h"
#include "fuzz/Require.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *bytes, size_t size) {
  silence();
  if (size < 3) return 0;
  const QByteArray data(reinterpret_cast<const char *>(bytes) + 3, qsizetype(size) - 3);
  const qint64 start = bytes[1], length = bytes[2];
  const QString narrow = id3text::id3v1StringInAtOffsetMaxLength(data, start, length);
  require(narrow.isNull() || !narrow.isEmpty());
  id3text::id3v22StringInAtOffsetEncodingMaxLength(data, start, bytes[0], length);
  for (const QString &text : id3text::id3v23StringsInWithinRange(data, start, length))
    require(!text.isNull());
  const TextBlock block = id3text::textBlockInWithinRange(data, start, length);
  require(block.text.isNull() || !block.text.isEmpty());
  qint64 used = length;
  const QString text = id3text::id3v23StringInAtOffsetEncodingMaxLength(data, start, bytes[0] % 6, used);
  // A last unit half outside, and the end behind it.
  require(used <= length + 3);
  require(text.isNull() || used > 0);
  require(id3text::bigEndianUnicodeData(text).size() == 2 + 2 * text.size());
  return 0;
}
