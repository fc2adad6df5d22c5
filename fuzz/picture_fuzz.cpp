// Any bytes as a picture frame of either kind: none, or a picture no larger than the frame that survives its
// archive.

#include "audio/ID3Image.h"
#include "fuzz/Require.h"

namespace {

void check(const ID3ImagePtr &image, qsizetype size) {
  if (!image) return;
  require(image->imageData().size() < size);
  require(image->filenameSuffix().isNull() == image->mimeFormat().isNull());
  const ID3ImagePtr restored = ID3Image::decode(image->encode());
  require(restored->imageData() == image->imageData() && restored->description() == image->description());
  require(image->copy()->mimeFormat() == restored->mimeFormat());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *bytes, size_t size) {
  silence();
  const QByteArray data(reinterpret_cast<const char *>(bytes), qsizetype(size));
  check(ID3Image::imageWithID3v22Frame(data), data.size());
  check(ID3Image::imageWithID3v23Frame(data), data.size());
  return 0;
}
