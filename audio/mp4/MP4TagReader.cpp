#include "audio/mp4/MP4TagReader.h"

#include <cmath>

#include "audio/ByteView.h"
#include "audio/mp4/Atom.h"
#include "values/Keys.h"

namespace {

constexpr quint32 kProtected = 0x64726d73;  // "drms"
constexpr quint32 kMp4a = 0x6d703461;
constexpr quint32 kEsds = 0x65736473;
/// From a sample entry's name to that of the "esds" inside it.
constexpr qint64 kEntryStep = 36;
/// Where an item's "data" has its value, behind its type and its locale.
constexpr qint64 kValue = 8;

}  // namespace

void MP4TagReader::read() {
  list = root.childAtAtomPathCreate(QStringLiteral("FILE:moov:udta:meta:ilst"));
  readText(QStringLiteral("ilst:©nam:data"), keys::title);
  readText(QStringLiteral("ilst:©ART:data"), keys::artist);
  readText(QStringLiteral("ilst:©alb:data"), keys::album);
  readText(QStringLiteral("ilst:©day:data"), keys::year);
  readText(QStringLiteral("ilst:©lyr:data"), keys::lyrics);
  readTrack();
  readGenre();
  readNumbers();
  readPictures();
  readFacts();
}

QByteArray MP4TagReader::payloadOf(const QString &path) const {
  Atom *atom = list ? list->childAtAtomPathCreate(path) : nullptr;
  return atom ? atom->data() : QByteArray();
}

void MP4TagReader::readText(const QString &path, Key key) {
  Atom *atom = list ? list->childAtAtomPathCreate(path) : nullptr;
  const QString text = atom ? atom->stringValue() : QString();
  if (!text.isNull()) tag.mAttribs.set(key, text);
}

void MP4TagReader::readTrack() {
  const QByteArray payload = payloadOf(QStringLiteral("ilst:trkn:data"));
  const ByteView bytes{payload};
  const quint16 track = bytes.size() < 12 ? 0 : bytes.u16(10);
  const quint16 total = bytes.size() < 14 ? 0 : bytes.u16(12);
  if (track == 0) return;
  const QString text = QString::number(track);
  tag.mAttribs.set(keys::track, total == 0 ? text : text + u'/' + QString::number(total));
}

void MP4TagReader::readGenre() {
  const QByteArray payload = payloadOf(QStringLiteral("ilst:gnre:data"));
  const quint16 number = payload.size() > kValue ? ByteView{payload}.u16(kValue) : 0;
  QString text;
  if (number != 0) {
    text = QStringLiteral("(%1)").arg(number - 1);
  } else if (Atom *atom = list ? list->childAtAtomPathCreate(QStringLiteral("ilst:©gen:data")) : nullptr) {
    text = atom->stringValue();
  }
  if (!text.isNull()) tag.mAttribs.set(keys::genre, AudioInfoTag::expandedGenres(text));
}

void MP4TagReader::readNumbers() {
  const QByteArray tempo = payloadOf(QStringLiteral("ilst:tmpo:data"));
  const quint16 bpm = tempo.size() > kValue ? ByteView{tempo}.u16(kValue) : 0;
  if (bpm > 0) tag.mAttribs.set(keys::bpm, QString::number(bpm));
  const QByteArray compilation = payloadOf(QStringLiteral("ilst:cpil:data"));
  if (!compilation.isEmpty()) tag.mAttribs.set(keys::compilation, ByteView{compilation}.u8(kValue) != 0);
}

void MP4TagReader::readPictures() {
  Atom *atom = list ? list->childAtAtomPathCreate(QStringLiteral("ilst:covr:data")) : nullptr;
  for (; atom; atom = atom->nextSibling()) {
    const QByteArray payload = atom->data();
    if (payload.size() <= kValue) continue;
    tag.mImages.push_back(ID3Image::imageWithDataMimeType(payload.sliced(kValue), {}));
  }
}

void MP4TagReader::readFacts() {
  constexpr quint32 kLargestScale = 99999;
  Atom *header = root.childAtAtomPathCreate(QStringLiteral("FILE:moov:mvhd"));
  const QByteArray movie = header ? header->data() : QByteArray();
  const quint32 scale = movie.size() < 16 ? 0 : ByteView{movie}.u32(12);
  const bool isTimed = scale >= 1 && scale <= kLargestScale;
  const float duration = isTimed ? float(ByteView{movie}.u32(16)) / float(scale) : -1.0F;
  readSampleEntry();
  if (isProtected) bitRate.reset();
  Atom *audio = root.childAtAtomPathCreate(QStringLiteral("FILE:mdat"));
  if (duration > 0 && !bitRate && audio) {
    constexpr double kBytesPerSecond = 124.0;
    bitRate = quint32(std::min(double(audio->size()) / (kBytesPerSecond * duration), 4.0e9));
    if (*bitRate >= 125 && *bitRate <= 131) bitRate = 128;
  }
  const Dictionary facts = tag.mMetadata.isNull() ? Dictionary::make() : tag.mMetadata.copyMembers(true);
  if (sampleRate.value_or(0) > 0) facts.set(keys::kMDItemAudioSampleRate, qint64(*sampleRate));
  if (bitRate.value_or(0) > 0) facts.set(keys::kMDItemAudioBitRate, qint64(*bitRate));
  if (duration > 0) facts.set(keys::kMDItemDurationSeconds, double(duration));
  tag.mMetadata = facts;
}

void MP4TagReader::readSampleEntry() {
  constexpr qint64 kFirstName = 12, kSampleRate = 28, kAverageRate = 26;
  constexpr quint32 kCeiling = 320;
  Atom *atom = root.childAtAtomPathCreate(QStringLiteral("FILE:moov:trak:mdia:minf:stbl:stsd"));
  const QByteArray payload = atom ? atom->data() : QByteArray();
  const ByteView bytes{payload};
  if (bytes.size() < 16) return;
  for (qint64 at = kFirstName; at < bytes.size() - 8 && !(sampleRate && bitRate); at += kEntryStep) {
    const quint32 name = bytes.u32(at);
    if (name == kProtected) isProtected = true;
    if ((name == kProtected || name == kMp4a) && bytes.u16(at + kSampleRate) > 0) {
      sampleRate = bytes.u16(at + kSampleRate);
    }
    if (name == kEsds) {
      const quint32 rate = std::min(bytes.u32(at + kAverageRate) / 1000, kCeiling);
      if (rate > 0) bitRate = rate;
    }
  }
}
