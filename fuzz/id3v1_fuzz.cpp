// Any bytes as a block of version 1: its texts fit their fields, and a block made of them says the same.

#include "audio/TagError.h"
#include "audio/tags/ID3Reader.h"
#include "audio/tags/ID3Writer.h"
#include "fuzz/Require.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *bytes, size_t size) {
  silence();
  const QByteArray data(reinterpret_cast<const char *>(bytes), qsizetype(size));
  MP3InfoTag tag, again;
  try {
    ID3Reader(tag).getAttributesFromID3v1(data);
  } catch (const TagError &) {
    require(data.isEmpty());
    return 0;
  }
  require(tag.title().size() <= 30 && tag.year().size() <= 4);
  const bool isExact = tag.canWriteID3v11WithoutLoss();
  const QByteArray block = ID3Writer(tag).dataForID3v11();
  require(block.size() == 128 && block.startsWith("TAG"));
  ID3Reader(again).getAttributesFromID3v1(block);
  require(again.track() == tag.track());
  require(!isExact || tag.title().isNull() == again.title().isNull());
  return 0;
}
