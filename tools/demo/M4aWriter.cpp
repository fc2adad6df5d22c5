#include "tools/demo/M4aWriter.h"

#include "tools/demo/BigEndian.h"

namespace {

constexpr int kSampleRate = 44100;
constexpr int kSamplesInFrame = 1024;
// One channel element without scale factor bands, then the end element (ISO 14496-3, 4.4.2.1): silence.
constexpr char kSilentFrame[] = {0, 0, 0, 7};

QByteArray atom(const char *type, const QByteArray &body) {
  QByteArray bytes;
  appendBigEndian(bytes, quint32(body.size() + 8));
  bytes.append(type, 4);
  return bytes + body;
}

QByteArray numbers(std::initializer_list<quint32> values) {
  QByteArray bytes;
  for (quint32 value : values) appendBigEndian(bytes, value);
  return bytes;
}

// The unity matrix of a movie or track header, 16.16 and 2.30 fixed point.
QByteArray matrix() {
  return numbers({0x10000, 0, 0, 0, 0x10000, 0, 0, 0, 0x40000000});
}

QByteArray movieHeader(quint32 duration) {
  return atom("mvhd", numbers({0, 0, 0, kSampleRate, duration, 0x10000, 0x01000000, 0, 0}) + matrix() +
                          numbers({0, 0, 0, 0, 0, 0, 2}));
}

QByteArray trackHeader(quint32 duration) {
  return atom("tkhd", numbers({7, 0, 0, 1, 0, duration, 0, 0, 0, 0x01000000}) + matrix() + numbers({0, 0}));
}

// A descriptor with its length in four bytes, as players write it (ISO 14496-1, 8.3.3): readers find the bit
// rate at a fixed distance.
QByteArray descriptor(char tag, const QByteArray &body) {
  return QByteArray(1, tag) + "\x80\x80\x80" + QByteArray(1, char(body.size())) + body;
}

QByteArray streamDescriptor(int bitRate) {
  const QByteArray specific = descriptor(5, QByteArray::fromHex("1208"));  // AAC LC, 44100 Hz, one channel
  QByteArray config = QByteArray::fromHex("4015000300");                   // MPEG-4 audio, an audio stream
  config += numbers({quint32(bitRate * 1000), quint32(bitRate * 1000)});
  const QByteArray stream = QByteArray(3, '\0') + descriptor(4, config + specific) + descriptor(6, "\x02");
  return atom("esds", numbers({0}) + descriptor(3, stream));
}

QByteArray sampleDescription(int bitRate) {
  QByteArray entry = numbers({0, 1, 0, 0, 0x00010010, 0, quint32(kSampleRate) << 16});
  return atom("stsd", numbers({0, 1}) + atom("mp4a", entry + streamDescriptor(bitRate)));
}

QByteArray sampleTables(quint32 frames, int bitRate, quint32 offset) {
  return atom("stbl", sampleDescription(bitRate) + atom("stts", numbers({0, 1, frames, kSamplesInFrame})) +
                          atom("stsc", numbers({0, 1, 1, frames, 1})) +
                          atom("stsz", numbers({0, sizeof kSilentFrame, frames})) +
                          atom("stco", numbers({0, 1, offset})));
}

QByteArray handler(const char *type, const char *maker, const QByteArray &name) {
  return atom("hdlr",
              numbers({0, 0}) + QByteArray(type, 4) + QByteArray(maker, 4) + numbers({0, 0}) + name + '\0');
}

QByteArray media(quint32 frames, int bitRate, quint32 offset) {
  const QByteArray references = atom("dinf", atom("dref", numbers({0, 1}) + atom("url ", numbers({1}))));
  return atom("mdia", atom("mdhd", numbers({0, 0, 0, kSampleRate, frames * kSamplesInFrame, 0x55c40000})) +
                          handler("soun", "\0\0\0\0", {}) +
                          atom("minf", atom("smhd", numbers({0, 0})) + references +
                                           sampleTables(frames, bitRate, offset)));
}

QByteArray tagItem(const char *name, quint32 dataType, const QByteArray &value) {
  if (value.isEmpty()) return {};
  return atom(name, atom("data", numbers({dataType, 0}) + value));
}

QByteArray numberOfCount(int number, int count, int tail) {
  if (number == 0) return {};
  return numbers({quint32(number), quint32(count) << 16}).left(6) + QByteArray(tail, '\0');
}

QByteArray metadata(const SongTags &tags) {
  constexpr quint32 kText = 1, kPng = 14, kInteger = 21;
  const QByteArray items =
      tagItem("\251nam", kText, tags.name.toUtf8()) + tagItem("\251ART", kText, tags.artist.toUtf8()) +
      tagItem("aART", kText, tags.albumArtist.toUtf8()) + tagItem("\251alb", kText, tags.album.toUtf8()) +
      tagItem("\251wrt", kText, tags.composer.toUtf8()) + tagItem("\251gen", kText, tags.genre.toUtf8()) +
      tagItem("\251cmt", kText, tags.comments.toUtf8()) +
      tagItem("\251day", kText, tags.year == 0 ? QByteArray() : QByteArray::number(tags.year)) +
      tagItem("trkn", 0, numberOfCount(tags.track, tags.trackCount, 2)) +
      tagItem("disk", 0, numberOfCount(tags.disc, tags.discCount, 0)) +
      tagItem("cpil", kInteger, tags.compilation ? QByteArray(1, '\1') : QByteArray()) +
      tagItem("covr", kPng, tags.artwork);
  return atom("udta", atom("meta", numbers({0}) + handler("mdir", "appl", {}) + atom("ilst", items)));
}

}  // namespace

SongFileBytes makeM4a(const SongTags &tags, int bitRate, int milliseconds) {
  const quint32 frames =
      quint32((qint64(milliseconds) * kSampleRate / 1000 + kSamplesInFrame - 1) / kSamplesInFrame);
  const quint32 duration = frames * kSamplesInFrame;
  const QByteArray type = atom("ftyp", "M4A " + numbers({0}) + "M4A mp42isom" + numbers({0}));
  const auto movie = [&](quint32 offset) {
    return atom("moov", movieHeader(duration) +
                            atom("trak", trackHeader(duration) + media(frames, bitRate, offset)) +
                            metadata(tags));
  };
  // The movie's size does not depend on the offset that it holds.
  const quint32 offset = quint32(type.size() + movie(0).size() + 8);

  SongFileBytes song;
  song.bytes = type + movie(offset) +
               atom("mdat", QByteArray(kSilentFrame, sizeof kSilentFrame).repeated(qsizetype(frames)));
  song.milliseconds = int(qint64(duration) * 1000 / kSampleRate);
  song.bitRate = bitRate;
  song.sampleRate = kSampleRate;
  return song;
}
