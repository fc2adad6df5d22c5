// Any bytes, over and over, as MPEG audio behind a tag of any length: a frame or none, the same twice, inside
// the file.

#include "audio/tags/MP3Header.h"
#include "fuzz/InputFile.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *bytes, size_t size) {
  silence();
  if (size < 4) return 0;
  static InputFile file;
  constexpr qsizetype kEnough = 30000;
  const QByteArray data(reinterpret_cast<const char *>(bytes) + 4, qsizetype(size) - 4);
  const QByteArray audio = repeated(data, kEnough);
  const QString path = file.holding(audio);
  qint32 tagLength = 0;
  std::memcpy(&tagLength, bytes, sizeof tagLength);
  if (bytes[3] < 128) tagLength %= qint32(kEnough);
  MP3Header header, second;
  const bool found = header.openFileWithTag(path, tagLength);
  require(found == second.openFileWithTag(path, tagLength));
  if (!found) return 0;
  require(header.getStartFrame() == second.getStartFrame());
  require(header.getStartFrame() >= tagLength && header.getStartFrame() < audio.size());
  require(header.getLayer() > 0 && header.getSeconds() == second.getSeconds());
  require(header.getXINGHeaderFound() || header.getBitRate() <= 448);
  require(!header.getEncodingString().isEmpty() && !header.getSecondsString().isEmpty());
  require(header.getHash().isEmpty());
  return 0;
}
