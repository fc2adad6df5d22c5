// Any bytes, over and over, as a file of unknown content: one of three answers, the same twice, and none for
// a file that is too short.

#include "audio/SongFile.h"
#include "fuzz/InputFile.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *bytes, size_t size) {
  silence();
  if (size < 1) return 0;
  static InputFile file;
  constexpr qsizetype kStep = 4096;
  const QByteArray data(reinterpret_cast<const char *>(bytes) + 1, qsizetype(size) - 1);
  const QByteArray whole = data + repeated(data, kStep * (bytes[0] % 16));
  const QString path = file.holding(whole);
  const qint32 kind = SongFile::songDataTypeAtPath(path);
  require(kind == SongFile::songDataTypeAtPath(path));
  require(kind >= SongFile::kUnknownData && kind <= SongFile::kMP4Data);
  require(whole.size() > kStep || kind == SongFile::kUnknownData);
  return 0;
}
