#include "audio/tags/ID3Writer.h"

#include <atomic>

#include "audio/tags/FrameBuffer.h"
#include "audio/tags/FrameIDs.h"
#include "audio/tags/TextEncoders.h"
#include "support/BMLog.h"

namespace {

std::atomic<bool> synchSafeSizesInV24{true};

enum Encoding : char { kLatin1 = 0, kUTF16 = 1, kBigEndian = 2 };

/// What texts of version 2.2 and of the later ones are written in if ISO Latin-1 will not do.
char wideEncoding(bool isV22) {
  return isV22 ? kUTF16 : kBigEndian;
}

QByteArray language(const TextBlock &block) {
  const auto letters = id3text::exactLatin1(block.lang.isNull() ? u"eng"_qs : block.lang);
  return letters && letters->size() == 3 ? *letters : QByteArray(3, '\0');
}

QByteArray lyricsBody(const TextBlock &block, bool isV22) {
  auto description = id3text::exactLatin1(block.desc);
  auto text = id3text::exactLatin1(block.text);
  const bool isNarrow = description && text;
  if (!isNarrow) {
    description = id3text::bigEndianUnicodeData(block.desc);
    text = id3text::bigEndianUnicodeData(block.text);
  }
  return (isNarrow ? char(kLatin1) : wideEncoding(isV22)) + language(block) + *description +
         QByteArray(isNarrow ? 1 : 2, '\0') + *text;
}

/// Every text with an end of its own.
QByteArray textsBody(const QStringList &texts) {
  QByteArray body(1, char(kLatin1));
  for (const QString &text : texts) {
    const auto narrow = id3text::exactLatin1(text);
    if (!narrow) {
      body = QByteArray(1, char(kBigEndian));
      for (const QString &each : texts) body += id3text::bigEndianUnicodeData(each) + QByteArray(2, '\0');
      return body;
    }
    body += *narrow + '\0';
  }
  return body;
}

/// The first text alone, without an end; nothing without a text.
QByteArray textBody22(const QStringList &texts) {
  if (texts.isEmpty()) return {};
  const auto narrow = id3text::exactLatin1(texts.front());
  return narrow ? char(kLatin1) + *narrow : char(kUTF16) + id3text::bigEndianUnicodeData(texts.front());
}

const char *kindOf(const FrameValue &value) {
  return std::holds_alternative<TextBlock>(value) ? "TextBlock" : "ID3Image";
}

void addFrame(FrameBuffer &buffer, const QByteArray &id, const FrameValue &value, bool isV22) {
  const auto *block = std::get_if<TextBlock>(&value);
  if (block && id == (isV22 ? "ULT" : "USLT")) {
    buffer.addFrame(id, lyricsBody(*block, isV22));
  } else if (const auto *texts = std::get_if<QStringList>(&value)) {
    const QByteArray body = isV22 ? textBody22(*texts) : textsBody(*texts);
    if (body.isEmpty()) {
      BMLog("can't encode a string as unicode!?");
    } else {
      buffer.addFrame(id, body);
    }
  } else if (const auto *raw = std::get_if<QByteArray>(&value)) {
    buffer.addRawFrame(id, *raw);
  } else {
    BMLog(isV22 ? "id3v22 frame '%@' of class %@!" : "id3v24 frame '%@' of class %@!",
          QString::fromLatin1(id), kindOf(value));
    buffer.addID(id);
  }
}

/// A text in a field of a version 1 block.
void putText(QByteArray &block, qsizetype at, qsizetype length, const QString &text) {
  const QByteArray bytes = id3text::lossyLatin1(text).first(std::min(length, text.size()));
  block.replace(at, bytes.size(), bytes);
}

char leadingNumber(const QString &text) {
  quint8 number = 0;
  for (const QChar digit : text) {
    if (digit < u'0' || digit > u'9') break;
    number = quint8(number * 10 + (digit.unicode() - u'0'));
  }
  return char(number);
}

}  // namespace

void ID3Writer::setWriteSynchSafeSizesInV24(bool synchSafe) {
  synchSafeSizesInV24 = synchSafe;
}

bool ID3Writer::writeSynchSafeSizesInV24() {
  return synchSafeSizesInV24;
}

QByteArray ID3Writer::dataForID3v11() const {
  constexpr qint64 kLargestGenre = 255;
  QByteArray block(128, '\0');
  block.replace(0, 3, "TAG");
  putText(block, 3, 30, tag.title());
  putText(block, 33, 30, tag.artist());
  putText(block, 63, 30, tag.album());
  putText(block, 93, 4, tag.year());
  block[126] = leadingNumber(tag.track());
  const qint64 genre = AudioInfoTag::indexOfGenre(tag.genres().section(u'/', 0, 0));
  block[127] = char(std::min(genre, kLargestGenre));
  return block;
}

QByteArray ID3Writer::dataForID3V23orV24(bool isVersion24) const {
  FrameBuffer buffer(isVersion24 ? 4 : 3, synchSafeSizesInV24);
  for (const MP3InfoTag::Frame &frame : tag.frames()) {
    if (frame.id.size() != buffer.idLength()) continue;
    const bool isOldYear = !isVersion24 && frame.id == "TDRC";
    addFrame(buffer, isOldYear ? "TYER" : frame.id, frame.value, false);
  }
  for (const ID3ImagePtr &image : tag.images()) {
    // End of the type, picture type 0, no description.
    const QByteArray head = char(kLatin1) + image->mimeFormat().toUtf8() + QByteArray(3, '\0');
    buffer.addFrame("APIC", head, image->imageData());
  }
  return buffer.finished();
}

QByteArray ID3Writer::dataForID3v22() const {
  FrameBuffer buffer(2, false);
  for (const MP3InfoTag::Frame &frame : tag.frames()) {
    if (frame.id.size() == buffer.idLength()) addFrame(buffer, frame.id, frame.value, true);
  }
  for (const ID3ImagePtr &image : tag.images()) {
    const QString suffix = image->filenameSuffix();
    if (suffix.isEmpty() || image->imageData().isEmpty()) {
      BMLog("%@/%@ dataForID3v22 cannot include %@", tag.artist(), tag.title(), image->mimeFormat());
      continue;
    }
    const QByteArray format = suffix.toUtf8().leftJustified(3, '\0', true);
    buffer.addFrame("PIC", char(kLatin1) + format + QByteArray(2, '\0'), image->imageData());
  }
  return buffer.finished();
}
