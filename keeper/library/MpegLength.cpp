#include "keeper/library/MpegLength.h"

#include <algorithm>

#include "audio/ByteView.h"
#include "audio/FileReader.h"
#include "audio/tags/MP3Header.h"

namespace {

constexpr qint64 kMillisecondsInSecond = 1000;

/// True if the bytes that a name at `at` belongs to begin a frame: four bytes and its side information stand
/// before it, which is as long as the version and the channels make it.
bool isInFrame(const ByteView &bytes, qint64 at) {
  const auto begins = [&](qint64 sideInformation) {
    const qint64 frame = at - 4 - sideInformation;
    return frame >= 0 && (bytes.u16(frame) & 0xFFE0) == 0xFFE0;
  };
  return begins(32) || begins(17) || begins(9);
}

/// The frames that a "Xing" or "Info" header counts; 0 without one. The header is looked for in the very
/// first frame: the one that `MP3Header` settles on may be a later one.
qint64 countedFrames(const QString &path, qint64 ahead) {
  constexpr qint64 kBlock = 4096, kHasCount = 1;
  const FileReader file(path);
  const QByteArray block = file.read(ahead, kBlock);
  const ByteView bytes{block};
  for (const QByteArrayView name : {QByteArrayView("Xing"), QByteArrayView("Info")}) {
    const qint64 at = block.indexOf(name);
    if (at >= 0 && isInFrame(bytes, at) && (bytes.u32(at + 4) & kHasCount) != 0) return bytes.u32(at + 8);
  }
  return 0;
}

qint64 samplesInFrame(const MP3Header &header) {
  if (header.getLayer() == 1) return 384;
  return header.getLayer() == 3 && header.getVersion() != 1 ? 576 : 1152;
}

}  // namespace

qint64 mpegLength::milliseconds(const QString &path, quint64 ahead, quint64 behind) {
  MP3Header header;
  if (!header.openFileWithTag(path, qint32(ahead)) || header.getFrequency() <= 0) return 0;
  if (const qint64 frames = countedFrames(path, qint64(ahead)); frames > 0) {
    return frames * samplesInFrame(header) * kMillisecondsInSecond / header.getFrequency();
  }
  if (header.getBitRate() <= 0) return 0;
  // The header is that of the fifth frame, as a rule; bytes that are no audio may stand before the first.
  const qint64 fourFrames = 4 * qint64(144000) * header.getBitRate() / header.getFrequency();
  const qint64 begin = std::max(qint64(ahead), header.getStartFrame() - fourFrames);
  return std::max<qint64>(0, qint64(header.getFileSize()) - begin - qint64(behind)) * 8 / header.getBitRate();
}
