#include "audio/TagError.h"
#include "audio/tags/FrameIDs.h"
#include "audio/tags/ID3Reader.h"
#include "audio/tags/TextDecoders.h"
#include "support/BMLog.h"

namespace {

constexpr qint64 kTagHeader = 10, kFrameHeader = 6, kID = 3;

qint64 integerOfFirstPart(const QString &text) {
  return Value(text.section(u'/', 0, 0)).toInteger();
}

}  // namespace

void ID3Reader::getAttributesFromID3v22(ByteView data) {
  qint64 at = kTagHeader;
  while (at <= data.size() - kFrameHeader) {
    const QString id = id3text::id3v1StringInAtOffsetMaxLength(data.bytes(), at, kID);
    qint64 size = data.u24(at + kID);
    if (id.isNull() || size == 0) return;
    const qint64 start = at + kFrameHeader;
    if (size > data.size() - start) {
      noteProblem();
      if (AudioInfoTag::shouldDiscardMalformedInfo()) return;
      size = data.size() - start;
    }
    count(1);
    readFrame22(id.toLatin1(), data.slice(start, size));
    at = start + size;
  }
}

void ID3Reader::readFrame22(const QByteArray &id, ByteView frame) {
  if (!frameids::internalRecognizedFrameIDs().contains(id)) {
    if (!isUnwanted(id)) tag.addObjectForFrameID(frame.copy(), id);
  } else if (id == "PIC") {
    if (const ID3ImagePtr image = ID3Image::imageWithID3v22Frame(frame.bytes())) {
      tag.addObjectForFrameID(image, frameids::kImage.toByteArray());
      return;
    }
    BMLog("ID3v22 PIC nil (%@/%@)", tag.artist(), tag.title());
    noteProblem();
    if (!AudioInfoTag::shouldDiscardMalformedInfo()) throw TagError("getAttributesFromID3v22");
  } else if (id == "ULT") {
    checkLength(frame.size());
    const TextBlock block = id3text::textBlockInWithinRange(frame.bytes(), 0, frame.size());
    if (!block.text.isNull()) tag.addObjectForFrameID(block, id);
  } else if (!frame.isEmpty()) {
    readText22(id, frame);
  }
}

void ID3Reader::readText22(const QByteArray &id, ByteView frame) {
  checkLength(frame.size());
  QString text =
      id3text::id3v22StringInAtOffsetEncodingMaxLength(frame.bytes(), 1, frame.u8(0), frame.size() - 1);
  if (id == "TYE" && Value(text).toInteger() < 1000) return;
  if (id == "TRK" && integerOfFirstPart(text) < 1) return;
  if (id == "TCO") text = AudioInfoTag::expandedGenres(text);
  const auto [place, isNew] = texts22.try_emplace(id, tag.mFrames.size());
  if (isNew) {
    tag.addObjectForFrameID(QStringList{text}, id);
  } else {
    tag.mFrames[place->second].value = QStringList{text};
  }
}
