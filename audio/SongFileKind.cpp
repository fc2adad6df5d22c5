#include <QStringList>

#include "audio/ByteView.h"
#include "audio/FileReader.h"
#include "audio/FileRewriter.h"
#include "audio/SongFile.h"
#include "platform/Platform.h"
#include "support/BMLog.h"

namespace {

constexpr qint64 kBlock = 4096;
constexpr qint64 kTagHeader = 10;

/// What stands behind the last full stop of a path's name, in lower case; empty for none, and for a name that
/// begins with its only one.
QString extensionOf(const QString &path) {
  const QString name = path.mid(path.lastIndexOf(u'/') + 1);
  const qsizetype dot = name.lastIndexOf(u'.');
  return dot > 0 ? name.mid(dot + 1).toLower() : QString();
}

bool hasTypeCode(const QString &path, const QStringList &codes) {
  const QString code = platform().fileFacts->typeCode(path);
  return !code.isEmpty() && codes.contains(code);
}

/// The length of the version 2 tag that a file begins with; 0 without one that can be.
qint64 tagLength(const ByteView &front, qint64 fileSize) {
  constexpr quint32 kSmallestTag = 7;
  const bool isTag = front.hasAt(0, "ID3") && front.u8(3) < 255 && front.u8(4) < 255 && front.u8(6) < 128 &&
                     front.u8(7) < 128 && front.u8(8) < 128 && front.u8(9) < 128;
  const qint64 length = qint64(front.synchSafe(6)) + kTagHeader;
  return isTag && front.synchSafe(6) >= kSmallestTag && length <= fileSize ? length : 0;
}

/// Looks at a file block by block until it is known what it holds.
class Sniffer {
 public:
  /// Begins with the file's first block, which has been read already.
  Sniffer(const FileReader &reader, const QByteArray &front)
      : file(reader), place(tagLength(ByteView{front}, reader.size())), window(front) {}

  qint32 dataType() {
    constexpr qint64 kFarthest = 499999;
    while (place <= kFarthest && place < file.size() - kBlock) {
      const ByteView block = nextBlock();
      countHeaders(block);
      place += kBlock;
      if (hits >= kManyHits) {
        constexpr float kClose = 800.0F;
        if (float(place) / float(hits) < kClose) return SongFile::kMPEGData;
      } else {
        noteAtoms(block);
      }
      if (seesMoov && seesUdta && seesMdia && hits <= kFewHits) return SongFile::kMP4Data;
    }
    return SongFile::kUnknownData;
  }

 private:
  static constexpr int kManyHits = 30, kFewHits = 9;

  /// Several blocks are read at once: mostly these are enough.
  ByteView nextBlock() {
    constexpr qint64 kAhead = 4 * kBlock;
    if (place < windowStart || place + kBlock > windowStart + window.size()) {
      windowStart = place;
      window = file.read(place, kAhead);
    }
    return ByteView{window}.slice(place - windowStart, kBlock);
  }

  /// Counts what looks like the header of a frame of MPEG 1, layer 2 or 3.
  void countHeaders(const ByteView &block) {
    constexpr qint64 kEnd = kBlock - 4, kFrame = 200;
    const QByteArrayView bytes = block.bytes();
    for (qint64 i = bytes.indexOf('\xFF'); i >= 0 && i < kEnd;) {
      const unsigned second = block.u8(i + 1) & 0xFE, third = block.u8(i + 2);
      const bool isHeader = (second == 0xFC || second == 0xFA) && third <= 0xEF && (third & 0x0C) != 0x0C;
      hits += isHeader ? 1 : 0;
      i = bytes.indexOf('\xFF', i + (isHeader ? kFrame : 1));
    }
  }

  void noteAtoms(const ByteView &block) {
    seesMoov = seesMoov || block.bytes().contains("moov");
    seesUdta = seesUdta || block.bytes().contains("udta");
    seesMdia = seesMdia || block.bytes().contains("mdia");
  }

  const FileReader &file;
  qint64 place;
  qint64 windowStart = 0;
  QByteArray window;
  int hits = 0;
  bool seesMoov = false, seesUdta = false, seesMdia = false;
};

}  // namespace

bool SongFile::claimsToBeMP3(const QString &path) {
  const QString extension = extensionOf(path);
  static const QStringList codes{QStringLiteral("MP3 "), QStringLiteral("MP3!"), QStringLiteral("Mp3 "),
                                 QStringLiteral("mp3!"), QStringLiteral("MPG3"), QStringLiteral("mpg3"),
                                 QStringLiteral("MPG2")};
  return extension == u"mp2" || extension == u"mp3" || hasTypeCode(path, codes);
}

bool SongFile::claimsToBeAAC(const QString &path) {
  const QString extension = extensionOf(path);
  static const QStringList codes{QStringLiteral("M4A "), QStringLiteral("M4P ")};
  return extension == u"m4a" || extension == u"m4p" || hasTypeCode(path, codes);
}

bool SongFile::claimsToBeOGG(const QString &path) {
  return extensionOf(path) == u"ogg";
}

bool SongFile::claimsToBeAIFF(const QString &path) {
  const QString extension = extensionOf(path);
  return extension == u"aif" || extension == u"aiff";
}

qint32 SongFile::songDataTypeAtPath(const QString &path) {
  return songDataTypeOfFile(FileReader(path), path);
}

qint32 SongFile::songDataTypeOfFile(const FileReader &file, const QString &path) {
  try {
    return file.size() < kBlock ? kUnknownData : Sniffer(file, file.read(0, kBlock)).dataType();
  } catch (const std::exception &problem) {
    BMLog("songDataTypeAtPath exception %@ for path: %@", QString::fromUtf8(problem.what()), path);
    return kUnknownData;
  }
}

bool SongFile::removeID3v2TagFromFileAtPath(const QString &path) {
  FileRewriter rewriter;
  const FileReader file(path);
  if (!file.isOpen() || !rewriter.open(path)) return false;
  if (file.size() <= kTagHeader) {
    BMLog("removeID3 file only %u bytes: %@", file.size(), path);
    return false;
  }
  const QByteArray front = file.read(0, kTagHeader);
  const ByteView header{front};
  if (!header.hasAt(0, "ID3") || header.u8(3) != 4) return false;
  const qint64 total = qint64(header.synchSafe(6)) + kTagHeader;
  if (file.size() <= total) {
    BMLog("removeID3 invalid tag size: %@", path);
    return false;
  }
  const QByteArray rest = file.read(total, file.size() - total);
  if (rest.size() != file.size() - total) return false;
  const QString failure = rewriter.replaceAll(rest);
  if (!failure.isNull()) BMLog("!! removeID3 %@: %@", path, failure);
  return failure.isNull();
}
