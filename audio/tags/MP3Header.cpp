#include "audio/tags/MP3Header.h"

#include <limits>

#include "audio/ByteView.h"
#include "audio/FileReader.h"
#include "support/BMLog.h"

namespace {

constexpr qint64 kBlock = 8192;
/// What must lie behind the tag for a header to be looked for.
constexpr qint64 kSmallestAudio = 16384;
/// So many hits settle on a frame.
constexpr int kHits = 5;
/// The fields of the version in a header.
constexpr unsigned kReservedVersion = 1, kMPEG1 = 3;

bool isCandidate(const ByteView &bytes, qint64 at) {
  const unsigned second = bytes.u8(at + 1), third = bytes.u8(at + 2);
  return bytes.u8(at) == 0xFF && (second & 0xE0) == 0xE0 && (second & 0x06) != 0 && (third >> 4) != 15 &&
         (third & 0x0C) != 0x0C;
}

/// Kilobits per second by table and index; 0 is free.
qint32 bitRateOf(bool isMPEG1, qint32 layer, unsigned index) {
  static constexpr short kRates[5][15] = {
      {0, 32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448},
      {0, 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384},
      {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320},
      {0, 32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256},
      {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160}};
  if (index > 14) return -1;
  const int table = isMPEG1 ? layer - 1 : (layer == 1 ? 3 : 4);
  return kRates[table][index];
}

qint32 frequencyOf(qint32 version, unsigned index) {
  static constexpr qint32 kFrequencies[3][4] = {
      {44100, 48000, 32000, 0}, {22050, 24000, 16000, 0}, {11025, 12000, 8000, 0}};
  return version == 0 ? 0 : kFrequencies[version - 1][index];
}

/// As much of a number as 32 bits hold.
qint32 wrapped(quint64 number) {
  return qint32(quint32(number));
}

template <size_t N>
QString named(const char16_t *const (&names)[N], qint32 number, const char16_t *unknown) {
  return QString::fromUtf16(number >= 0 && size_t(number) < N && names[number] ? names[number] : unknown);
}

constexpr const char16_t *kVersions[] = {nullptr, u"MPEG 1", u"MPEG 2", u"MPEG 2.5"};
constexpr const char16_t *kLayers[] = {nullptr, u"Layer 1", u"Layer 2", u"Layer 3"};
constexpr const char16_t *kChannels[] = {u"Stereo", u"Joined Stereo", u"Dual Channel", u"Single Channel"};

}  // namespace

void MP3Header::releaseAttributes() {
  buffer = {};
  hash = {};
  startFrame = 0;
  bufferOffsetInFile = 0;
  seconds = 0;
  numberOfFrames = 0;
  XINGHeaderFound = false;
}

bool MP3Header::openFileWithTag(const QString &path, qint32 tagLength) {
  try {
    return lookBehindTag(path, tagLength);
  } catch (const std::exception &problem) {
    BMLog("*** MP3Header openFile:withTag: %@", QString::fromUtf8(problem.what()));
    return false;
  }
}

bool MP3Header::lookBehindTag(const QString &path, qint32 tagLength) {
  releaseAttributes();
  startFrame = bufferOffsetInFile = tagLength;
  const FileReader file(path);
  if (!file.isOpen()) {
    BMLog("MP3 header: no fileHandleForReadingAtPath %@", path);
    return false;
  }
  fileSize = quint64(file.size());
  // Offsets are of 32 bits: audio that begins beyond them is not looked for.
  constexpr qint64 kFarthest = std::numeric_limits<qint32>::max() - 4 * kBlock;
  if (tagLength < 0 || tagLength > kFarthest || file.size() < tagLength + kSmallestAudio) return false;
  if (!findHeaderIn(file, path)) {
    buffer = {};
    return false;
  }
  decodeHeader();
  constexpr qint32 kLateInBuffer = 2049;
  if (startFrame - bufferOffsetInFile >= kLateInBuffer) {
    buffer = file.read(startFrame, kBlock);
    bufferOffsetInFile = startFrame;
  }
  return true;
}

bool MP3Header::findHeaderIn(const FileReader &file, const QString &path) {
  for (const int attempt : {1, 2}) {
    buffer = file.read(bufferOffsetInFile, kBlock);
    if (buffer.isEmpty()) {
      BMLog("MP3 header: (%d) could not read %@", attempt, path);
      return false;
    }
    if (findHeader()) return true;
    if (attempt == 2) break;
    startFrame += qint32(kBlock - 1);
    bufferOffsetInFile += qint32(kBlock - 1);
  }
  BMLog("MP3 header: invalid MPEG header %@", path);
  return false;
}

bool MP3Header::findHeader() {
  const ByteView bytes{buffer};
  int hits = 0;
  qint32 first = 0;
  for (qint64 i = 0; i < kBlock - 2;) {
    if (!isCandidate(bytes, i)) {
      ++i;
      continue;
    }
    startFrame = qint32(i) + bufferOffsetInFile;
    decodeHeader();
    if (XINGHeaderFound) return true;
    if (hits == 0) first = startFrame;
    if (++hits == kHits) return true;
    i += stepBehind(i);
  }
  if (first <= 0) return false;
  startFrame = first;
  return true;
}

// Frames of MPEG 2 and 2.5, layer 3, are half as long: the walk then lands inside a frame and looks on.
qint32 MP3Header::stepBehind(qint64 frame) const {
  if (bitRate <= 0 || frequency <= 0) return 1;
  const qint32 padding = ByteView{buffer}.u8(frame + 2) >> 1 & 1;
  const qint32 step =
      layer == 1 ? (12000 * bitRate / frequency + padding) * 4 : 144000 * bitRate / frequency + padding;
  return std::max(step, 1);
}

bool MP3Header::decodeHeader() {
  static constexpr qint32 kVersionOf[] = {3, 0, 2, 1};
  static constexpr qint32 kLayerOf[] = {0, 3, 2, 1};
  const qint64 frame = startFrame - bufferOffsetInFile;
  const ByteView bytes{buffer};
  const unsigned v = bytes.u8(frame + 1) >> 3 & 3, l = bytes.u8(frame + 1) >> 1 & 3;
  const unsigned third = bytes.u8(frame + 2);
  version = kVersionOf[v];
  layer = kLayerOf[l];
  bitRate = v == kReservedVersion || l == 0 ? 0 : bitRateOf(v == kMPEG1, layer, third >> 4);
  frequency = frequencyOf(version, third >> 2 & 3);
  channels = bytes.u8(frame + 3) & 3;
  const quint64 audio = fileSize - std::min(fileSize, quint64(startFrame));
  seconds = bitRate > 0 ? wrapped(audio * 8 / (quint64(bitRate) * 1000)) : 0;
  readXingHeader(frame);
  return true;
}

void MP3Header::readXingHeader(qint64 frame) {
  constexpr qint32 kSingle = 3;
  const qint64 place = version == 1 ? (channels == kSingle ? 21 : 36) : (channels == kSingle ? 14 : 17);
  const ByteView bytes{buffer};
  const qint64 at = frame + place;
  if (!bytes.hasAt(at, "Xing") || (bytes.u8(at + 7) & 1) == 0) return;
  numberOfFrames = qint32(bytes.u32(at + 8));
  if (numberOfFrames <= 0) return;
  // The length of a frame is taken to be 26 of 994 seconds, whatever the version.
  XINGHeaderFound = true;
  const auto frames = quint32(numberOfFrames);
  seconds = wrapped(frames * 26U / 994U);
  const quint64 audio = fileSize - std::min(fileSize, quint64(startFrame));
  bitRate = wrapped((audio * 7952 / (quint64(frames) * 26) + 500) / 1000);
}

QString MP3Header::getVersionString() const {
  return named(kVersions, version, u"UNKNOWN");
}

QString MP3Header::getLayerString() const {
  return named(kLayers, layer, u"UNKNOWN");
}

QString MP3Header::getBitRateString() const {
  return QStringLiteral("%1 kbps").arg(bitRate);
}

QString MP3Header::getFrequencyString() const {
  return QStringLiteral("%1,%2 kHz").arg(frequency / 1000).arg(frequency % 1000);
}

QString MP3Header::getChannelString() const {
  return named(kChannels, channels, u"UNKNOWN");
}

QString MP3Header::getSecondsString() const {
  constexpr qint32 kMinute = 60, kHour = 3600, kDay = 86400;
  const auto two = [](qint32 number) { return QStringLiteral("%1").arg(number, 2, 10, QChar(u'0')); };
  if (seconds < kMinute) return QString::number(seconds);
  QString text;
  if (seconds >= kDay) text += QString::number(seconds / kDay) + u':';
  if (seconds >= kHour) text += QString::number(seconds % kDay / kHour) + u':';
  return text + QString::number(seconds % kHour / kMinute) + u':' + two(seconds % kMinute);
}

QString MP3Header::getEncodingString() const {
  const QString channelText = channels >= 0 && channels <= 3 ? getChannelString() + u'.' : QString();
  return QStringLiteral("%1, %2, %3bps, %4Hz, %5")
      .arg(getVersionString(), getLayerString(), QString::number(bitRate), QString::number(frequency),
           channelText);
}

QByteArray MP3Header::getHash() {
  constexpr qint64 kNeeded = 6144;
  if (buffer.size() < startFrame - bufferOffsetInFile + kNeeded) return {};
  return hash;
}
