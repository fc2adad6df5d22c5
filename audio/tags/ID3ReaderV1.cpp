#include "audio/TagError.h"
#include "audio/tags/ID3Reader.h"
#include "audio/tags/TextDecoders.h"
#include "support/Format.h"

namespace {

struct Field {
  qint64 at, length;
  const char *oldID, *newID;
};
constexpr Field kTexts[] = {{3, 30, "TT2", "TIT2"}, {33, 30, "TP1", "TPE1"}, {63, 30, "TAL", "TALB"}};
constexpr Field kYear{93, 4, "TYE", "TDRC"};
constexpr Field kComment{97, 28, nullptr, "COMM"};
constexpr qint64 kMark = 125, kTrack = 126, kGenre = 127;

QString textOf(ByteView block, const Field &field) {
  return id3text::id3v1StringInAtOffsetMaxLength(block.bytes(), field.at, field.length);
}

}  // namespace

void ID3Reader::getAttributesFromID3v1(QByteArrayView data) {
  if (data.isEmpty()) throw TagError("getAttributesFromID3v1");
  const ByteView block(data);
  for (const Field &field : kTexts) storeV1(textOf(block, field), field.oldID, field.newID);
  const QString year = textOf(block, kYear);
  if (Value(year).toInteger() >= 1001) storeV1(year, kYear.oldID, kYear.newID);
  if (!tag.isVersion22()) storeV1Comment(block);
  const quint8 genre = block.u8(kGenre);
  if (genre < AudioInfoTag::allGenres().size()) {
    storeV1(AudioInfoTag::expandedGenres(formatText(QStringLiteral("(%d)"), {genre})), "TCO", "TCON");
  }
  const bool hasTrack = block.u8(kMark) == 0 && block.u8(kTrack) != 0;
  if (hasTrack) storeV1(QString::number(block.u8(kTrack)), "TRK", "TRCK");
  if (tag.readVersion().isNull())
    tag.setReadVersion(hasTrack ? QStringLiteral("1.1") : QStringLiteral("1.0"));
}

void ID3Reader::storeV1(const QString &text, const char *oldID, const char *newID) {
  const QByteArray id = tag.isVersion22() ? oldID : newID;
  if (!text.isNull() && !tag.firstObjectForFrameIDOrID(id, id))
    tag.addObjectForFrameID(QStringList{text}, id);
}

void ID3Reader::storeV1Comment(ByteView block) {
  const QString comment = textOf(block, kComment);
  if (comment.isNull() || tag.firstObjectForFrameIDOrID(kComment.newID, kComment.newID)) return;
  // As a frame of its own would hold it: flags, encoding, language, no description.
  constexpr char kHead[] = "\0\0\0eng";
  tag.addObjectForFrameID(QByteArray(kHead, sizeof kHead) + comment.toLatin1(), kComment.newID);
}
