// Any bytes as a whole tag of version 2: frames or none, the same twice; what was read can be written in
// every version, and what was written has the size that it tells and is read again.

#include "audio/TagError.h"
#include "audio/tags/ID3Reader.h"
#include "audio/tags/ID3Writer.h"
#include "fuzz/Require.h"

namespace {

bool reads(MP3InfoTag &tag, const QByteArray &bytes) {
  try {
    ID3Reader(tag).getAttributesFromID3v2(bytes);
    return true;
  } catch (const TagError &) {
    return false;
  }
}

void writeAndRead(const QByteArray &written) {
  require(written.size() >= 10);
  require(ByteView(QByteArrayView(written)).synchSafe(6) == quint32(written.size() - 10));
  MP3InfoTag again;
  reads(again, written);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *bytes, size_t size) {
  silence();
  const QByteArray data(reinterpret_cast<const char *>(bytes), qsizetype(size));
  MP3InfoTag tag, second;
  const bool isTag = reads(tag, data);
  require(isTag == reads(second, data));
  require(tag.frames().size() == second.frames().size());
  if (!isTag) return 0;
  tag.setTitle(QStringLiteral("title"));
  const ID3Writer writer(tag);
  require(writer.dataForID3v11().size() == 128);
  writeAndRead(writer.dataForID3V23orV24(true));
  writeAndRead(writer.dataForID3V23orV24(false));
  writeAndRead(writer.dataForID3v22());
  for (qint32 count = tag.numberOfImages(); count > 0; --count) require(tag.removeImageAtIndex(0));
  require(tag.images().empty());
  return 0;
}
