#include "audio/TagError.h"
#include "audio/tags/FrameIDs.h"
#include "audio/tags/FrameSize.h"
#include "audio/tags/ID3Reader.h"
#include "audio/tags/TextDecoders.h"
#include "support/BMLog.h"

namespace {

constexpr qint64 kTagHeader = 10, kFrameHeader = 10, kID = 4, kLengthIndicator = 4, kSmallestPicture = 5;

enum HeaderFlag : quint8 { kUnsynchronized = 0x80, kExtendedHeader = 0x40 };
constexpr quint8 kHasLengthIndicator = 0x01;

/// The id of the frame at an offset, in four letters if the three are known; null for padding.
QByteArray frameIDAt(ByteView data, qint64 at) {
  const QByteArray id = id3text::id3v1StringInAtOffsetMaxLength(data.bytes(), at, kID).toLatin1();
  return id.size() == 3 ? frameids::frameIDUpgrade(id) : id;
}

/// True for a year or a track number that says nothing.
bool isVoid(const QByteArray &id, const QString &text) {
  if (id == "TDRC") return Value(text).toInteger() <= 999;
  return id == "TRCK" && Value(text.section(u'/', 0, 0)).toInteger() <= 0;
}

}  // namespace

qint64 ID3Reader::firstFrame(ByteView data) {
  const quint8 flags = data.u8(5);
  if (flags & kUnsynchronized) BMLog("*** ID3V2.4 UNSYNCHRONIZED ***");
  if (!(flags & kExtendedHeader)) return kTagHeader;
  const qint64 size = data.u32(kTagHeader);
  if (size < data.size() + 24) return kTagHeader + 4 + size;
  noteProblem();
  BMLog("*** EXTENDER HEADER %u bytes ( >%u, IGNORED ) ***", size, data.size());
  return kTagHeader;
}

void ID3Reader::getAttributesFromID3v2xAssumeSynchSafeSizes(ByteView data, bool assumeSynchSafe) {
  qint64 at = firstFrame(data);
  Frame frame;
  while (at <= data.size() - kFrameHeader && locateFrame(data, at, assumeSynchSafe, frame)) {
    count(1);
    readFrame(data, frame);
    at = frame.end;
  }
}

/// False where the tag ends.
bool ID3Reader::locateFrame(ByteView data, qint64 at, bool assumeSynchSafe, Frame &frame) {
  frame.id = frameIDAt(data, at);
  if (frame.id.isEmpty()) return false;
  frame.start = at + kFrameHeader;
  if (const std::optional<qint64> size = frameSizeAt(data, at, assumeSynchSafe)) {
    frame.size = *size;
  } else {
    noteProblem();
    BMLog("*** id3v23/4 '%@' invalid size (%@)", QString::fromLatin1(frame.id), titleSoFar());
    if (AudioInfoTag::shouldDiscardMalformedInfo()) return false;
    frame.size = data.size() - frame.start;
  }
  const qint64 indicated = data.synchSafe(frame.start);
  if ((data.u8(at + 9) & kHasLengthIndicator) && indicated != 0 && indicated == frame.size) {
    BMLog("*** id3v23 '%@' length indicator used OK (%@)", QString::fromLatin1(frame.id), titleSoFar());
    frame.start += kLengthIndicator;
  }
  frame.end = frame.start + frame.size;
  if (frame.end <= data.size()) return true;
  BMLog("*** id3v23 '%@' overrun (%@)", QString::fromLatin1(frame.id), titleSoFar());
  noteProblem();
  return false;
}

void ID3Reader::readFrame(ByteView data, const Frame &frame) {
  if (frameids::dangerousFrameIDs().contains(frame.id)) {
    BMLog("*** id3v23 '%@' dangerous (%@)", QString::fromLatin1(frame.id), titleSoFar());
    noteProblem();
  }
  if (!frameids::internalRecognizedFrameIDs().contains(frame.id)) {
    // With the two flag bytes, so that the frame can be written back as it was.
    if (!isUnwanted(frame.id))
      tag.addObjectForFrameID(data.slice(frame.start - 2, frame.size + 2).copy(), frame.id);
  } else if (frame.id.startsWith('T')) {
    readTexts(data, frame);
  } else if (frame.id == "USLT") {
    checkLength(frame.size);
    const TextBlock block = id3text::textBlockInWithinRange(data.bytes(), frame.start, frame.size);
    if (!block.text.isNull()) tag.addObjectForFrameID(block, frame.id);
  } else if (frame.id == "APIC") {
    readPicture(data, frame);
  } else {
    noteProblem();
    BMLog("*** ID3v23 '%@' recognized but no handler", QString::fromLatin1(frame.id));
    throw TagError("getAttributesFromID3v23");
  }
}

void ID3Reader::readTexts(ByteView data, const Frame &frame) {
  checkLength(frame.size);
  QStringList texts = id3text::id3v23StringsInWithinRange(data.bytes(), frame.start, frame.size);
  count(texts.size());
  const QByteArray id = frame.id == "TYER" ? "TDRC" : frame.id;
  if (texts.isEmpty() || isVoid(id, texts.front())) return;
  if (id == "TCON" && texts.size() == 1) texts.front() = AudioInfoTag::expandedGenres(texts.front());
  tag.addObjectForFrameID(texts, id);
}

void ID3Reader::readPicture(ByteView data, const Frame &frame) {
  if (frame.size < kSmallestPicture) return;
  const ByteView bytes = data.slice(frame.start, frame.size);
  if (const ID3ImagePtr image = ID3Image::imageWithID3v23Frame(bytes.bytes())) {
    tag.addObjectForFrameID(image, frameids::kImage.toByteArray());
    return;
  }
  noteProblem();
  BMLog("*** ID3v23 APIC thePicture nil!");
  if (!AudioInfoTag::shouldDiscardMalformedInfo()) throw TagError("getAttributesFromID3v23");
}
