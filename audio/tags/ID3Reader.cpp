#include "audio/tags/ID3Reader.h"

#include "audio/FileReader.h"
#include "audio/TagError.h"
#include "audio/tags/FrameIDs.h"
#include "audio/tags/TextDecoders.h"
#include "support/BMLog.h"
#include "support/Format.h"

namespace {

constexpr qint64 kHeader = 10, kSmallestTag = 7, kBlock = 128, kSmallText = 512 * 1024;

bool isID3v2Header(ByteView head) {
  if (!head.hasAt(0, "ID3") || head.u8(3) == 0xFF || head.u8(4) == 0xFF) return false;
  return head.size() >= kHeader && ((head.u32(6) & 0x80808080) == 0);
}

}  // namespace

void ID3Reader::readFile(const FileReader &file, const QString &path) {
  if (!file.isOpen()) throw TagError("nil filehandle");
  if (file.size() < kBlock) {
    noteProblem();
    BMLog("MP3 only %qu bytes in %@", file.size(), path);
    throw TagError("file too small");
  }
  findID3v2(file.read(0, 32), file.size(), path);
  const bool hasID3v2 = tag._id3v2Range.length > 0;
  if (hasID3v2) getAttributesFromID3v2(file.read(0, qint64(tag._id3v2Range.length)));
  const QByteArray block = file.read(file.size() - kBlock, kBlock);
  if (!block.startsWith("TAG")) return;
  tag._id3v1Range = {quint64(file.size() - kBlock), quint64(kBlock)};
  if (!hasID3v2) getAttributesFromID3v1(block);
}

void ID3Reader::findID3v2(const QByteArray &head, qint64 fileSize, const QString &path) {
  if (!isID3v2Header(QByteArrayView(head))) return;
  const qint64 size = id3text::getSynchSafeIntInAtOffset(head, 6);
  if (size < kSmallestTag || size + kHeader > fileSize) {
    BMLog("MP3 tag length wrong for file: %@", path);
    noteProblem();
    throw TagError("bad size tag");
  }
  tag._id3v2Range = {0, quint64(size + kHeader)};
}

void ID3Reader::getAttributesFromID3v2(QByteArrayView data) {
  if (data.isEmpty()) return;
  const ByteView bytes(data);
  // A character takes two bytes in memory.
  longestText = (data.size() + kSmallText) / 2;
  tag.setReadVersion(formatText(QStringLiteral("2.%d.%d"), {bytes.u8(3), bytes.u8(4)}));
  switch (bytes.u8(3)) {
    case 2:
      return getAttributesFromID3v22(bytes);
    case 3:
      return getAttributesFromID3v2xAssumeSynchSafeSizes(bytes, false);
    case 4:
      return getAttributesFromID3v2xAssumeSynchSafeSizes(bytes, true);
    default:
      break;
  }
  noteProblem();
  throw TagError("cannot read ID3v" + tag.readVersion().toStdString());
}

void ID3Reader::count(qint64 framesOrTexts) {
  counted += framesOrTexts;
  if (counted <= kMost) return;
  BMLog("!! more than %qd frames and texts in the tag of '%@'", kMost, titleSoFar());
  throw TagError("too many frames");
}

void ID3Reader::checkLength(qint64 textBytes) const {
  if (textBytes <= longestText) return;
  BMLog("!! a text of %qd bytes in a tag", textBytes);
  throw TagError("a text too long");
}

bool ID3Reader::isUnwanted(const QByteArray &id) const {
  return AudioInfoTag::shouldDiscardUnrecognizedInfo() && !frameids::iTunesRecognizedFrameIDs().contains(id);
}

const QString &ID3Reader::titleSoFar() {
  for (; title.isNull() && framesSearched < tag.mFrames.size(); ++framesSearched) {
    const MP3InfoTag::Frame &frame = tag.mFrames[framesSearched];
    const auto *texts = std::get_if<QStringList>(&frame.value);
    if (texts && !texts->isEmpty() && frame.id == "TIT2") title = texts->front();
  }
  return title;
}
