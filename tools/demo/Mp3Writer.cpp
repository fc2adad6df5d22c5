#include "tools/demo/Mp3Writer.h"

#include <QStringEncoder>

#include "tools/demo/BigEndian.h"

namespace {

constexpr int kSampleRate = 44100;
constexpr int kSamplesInFrame = 1152;

// Text in the encoding that needs least: Latin-1, or UTF-16 with its byte order mark.
QByteArray encodedText(const QString &text, char *encoding) {
  const bool latin = std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 256; });
  *encoding = latin ? 0 : 1;
  if (latin) return text.toLatin1();
  QStringEncoder encode(QStringEncoder::Utf16LE);
  const QByteArray units = encode(text);
  return QByteArray("\xff\xfe", 2) + units;
}

void appendFrame(QByteArray &tag, const char *id, const QByteArray &body) {
  tag.append(id, 4);
  appendBigEndian(tag, quint32(body.size()));
  tag.append(2, '\0');
  tag += body;
}

void appendText(QByteArray &tag, const char *id, const QString &text) {
  if (text.isEmpty()) return;
  char encoding = 0;
  const QByteArray body = encodedText(text, &encoding);
  appendFrame(tag, id, QByteArray(1, encoding) + body);
}

QString ofCount(int number, int count) {
  if (number == 0) return {};
  return count == 0 ? QString::number(number) : QStringLiteral("%1/%2").arg(number).arg(count);
}

void appendComment(QByteArray &tag, const QString &text) {
  if (text.isEmpty()) return;
  char encoding = 0;
  const QByteArray body = encodedText(text, &encoding);
  const QByteArray noDescription = encoding == 0 ? QByteArray(1, '\0') : QByteArray("\xff\xfe\0\0", 4);
  appendFrame(tag, "COMM", QByteArray(1, encoding) + "eng" + noDescription + body);
}

void appendPicture(QByteArray &tag, const QByteArray &png) {
  if (png.isEmpty()) return;
  // Latin-1, the type of the data, front cover, no description.
  appendFrame(tag, "APIC", QByteArray("\0image/png\0\x03\0", 13) + png);
}

// ID3v2.3.0, sections 3.1 to 4.15.
QByteArray id3Tag(const SongTags &tags) {
  QByteArray frames;
  appendText(frames, "TIT2", tags.name);
  appendText(frames, "TPE1", tags.artist);
  appendText(frames, "TPE2", tags.albumArtist);
  appendText(frames, "TALB", tags.album);
  appendText(frames, "TCOM", tags.composer);
  appendText(frames, "TCON", tags.genre);
  appendText(frames, "TYER", tags.year == 0 ? QString() : QString::number(tags.year));
  appendText(frames, "TRCK", ofCount(tags.track, tags.trackCount));
  appendText(frames, "TPOS", ofCount(tags.disc, tags.discCount));
  if (tags.compilation) appendText(frames, "TCMP", QStringLiteral("1"));
  appendComment(frames, tags.comments);
  appendPicture(frames, tags.artwork);
  frames.append(64, '\0');  // padding, so that an editor can change a name in place

  QByteArray tag("ID3\x03\0\0", 6);
  for (int shift = 21; shift >= 0; shift -= 7) tag += char((frames.size() >> shift) & 0x7f);
  return tag + frames;
}

}  // namespace

SongFileBytes makeMp3(const SongTags &tags, int bitRate, int milliseconds) {
  static constexpr int kRates[] = {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320};
  const auto found = std::find(std::begin(kRates), std::end(kRates), bitRate);
  Q_ASSERT(found != std::end(kRates));
  const int rateIndex = int(found - std::begin(kRates));
  const int frameCount =
      int((qint64(milliseconds) * kSampleRate / 1000 + kSamplesInFrame - 1) / kSamplesInFrame);

  SongFileBytes song{id3Tag(tags), 0, bitRate, kSampleRate};
  // A frame whose side information is all zeros holds no spectral lines: silence. A frame is a whole number
  // of bytes; the rest is carried on and paid with a padding byte, so that the rate is kept on the average.
  qint64 bytesDue = 0;
  for (int i = 0; i < frameCount; ++i) {
    const qint64 before = bytesDue / kSampleRate;
    bytesDue += qint64(144) * bitRate * 1000;
    const int size = int(bytesDue / kSampleRate - before);
    const int padding = size - 144 * bitRate * 1000 / kSampleRate;
    QByteArray frame(size, '\0');
    frame[0] = char(0xff);
    frame[1] = char(0xfb);  // MPEG-1, Layer III, no checksum
    frame[2] = char(rateIndex << 4 | padding << 1);
    frame[3] = char(0xc4);  // mono, original
    song.bytes += frame;
  }
  song.milliseconds = int(qint64(frameCount) * kSamplesInFrame * 1000 / kSampleRate);
  return song;
}
