#include "audio/tags/MP3Header.h"

#include <QtEndian>

#include "tests/fixtures/TestPlatform.h"

namespace {

/// MPEG 1, layer 3, 128 kbit/s, 44,100 Hz, stereo: frames of 417 bytes.
const QByteArray kHeader("\xFF\xFB\x90\x00", 4);
constexpr int kFrame = 417;

QByteArray frames(int count, const QByteArray &header = kHeader, int length = kFrame) {
  return (header + QByteArray(length - header.size(), '\0')).repeated(count);
}

/// A frame with a Xing header at a place.
QByteArray xing(const QByteArray &header, int place, quint32 flags, quint32 count) {
  QByteArray bytes = header + QByteArray(place - header.size(), '\0') + "Xing" + QByteArray(8, '\0');
  qToBigEndian(flags, bytes.data() + place + 4);
  qToBigEndian(count, bytes.data() + place + 8);
  return bytes;
}

class MPEGHeader : public TestPlatform {
 protected:
  bool open(const QByteArray &bytes, qint32 tagLength = 0) {
    return header.openFileWithTag(writeFile(u"music/a.mp3"_qs, bytes), tagLength);
  }
  MP3Header header;
};

TEST_F(MPEGHeader, AudioMustBeLongEnoughBehindTheTag) {
  const QByteArray audio = frames(60).left(16384);
  for (const int tag : {0, 100}) {
    EXPECT_TRUE(open(QByteArray(tag, '\0') + audio, tag)) << tag;
    EXPECT_FALSE(open(QByteArray(tag, '\0') + audio.chopped(1), tag)) << tag;
  }
  EXPECT_TRUE(logText().isEmpty()) << "too little audio is no event";
  EXPECT_FALSE(header.openFileWithTag(folder(u"music/none.mp3"_qs), 0));
  EXPECT_TRUE(logContains(u"no fileHandleForReadingAtPath"_qs));
  for (const qint32 length : {-1, 2147483647}) EXPECT_FALSE(open(audio, length));
}

TEST_F(MPEGHeader, FiveHitsSettleAndALoneOneIsTakenUnlessItOpensTheFile) {
  const QByteArray silence(20000, '\0');
  const struct {
    const char *what;
    QByteArray bytes;
    qint32 start;
  } cases[] = {{"five hits", frames(60), 4 * kFrame},
               {"behind silence", QByteArray(100, '\0') + frames(60), 100 + 4 * kFrame},
               {"one at 3000", QByteArray(silence).replace(3000, 4, kHeader), 3000},
               {"one in the second block", QByteArray(silence).replace(9000, 4, kHeader), 9000},
               {"one at 0", QByteArray(silence).replace(0, 4, kHeader), -1},
               {"one too far", QByteArray(silence).replace(16400, 4, kHeader), -1},
               {"none", silence, -1}};
  for (const auto &one : cases) {
    EXPECT_EQ(open(one.bytes), one.start >= 0) << one.what;
    EXPECT_TRUE(one.start < 0 || header.getStartFrame() == one.start) << one.what;
  }
}

TEST_F(MPEGHeader, FieldsAreDecodedByVersionAndLayer) {
  const struct {
    QByteArray bytes;
    qint32 version, layer, bitRate, frequency, channels;
  } cases[] = {{QByteArray("\xFF\xFB\x92\x40", 4), 1, 3, 128, 44100, 0},
               {QByteArray("\xFF\xFB\x92\xC3", 4), 1, 3, 128, 44100, 3},
               {QByteArray("\xFF\xFD\xE4\x01", 4), 1, 2, 384, 48000, 1},
               {QByteArray("\xFF\xFF\xE8\x02", 4), 1, 1, 448, 32000, 2},
               {QByteArray("\xFF\xF3\xE4\x00", 4), 2, 3, 160, 24000, 0},
               {QByteArray("\xFF\xE3\x18\x00", 4), 3, 3, 8, 8000, 0},
               {QByteArray("\xFF\xEB\x90\x00", 4), 0, 3, 0, 0, 0},
               {QByteArray("\xFF\xFB\x00\x00", 4), 1, 3, 0, 44100, 0}};
  for (const auto &one : cases) {
    ASSERT_TRUE(open(QByteArray(10, '\0') + one.bytes + QByteArray(20000, '\0')));
    EXPECT_EQ(header.getVersion(), one.version) << one.bytes.toHex().constData();
    EXPECT_EQ(header.getLayer(), one.layer) << one.bytes.toHex().constData();
    EXPECT_EQ(header.getBitRate(), one.bitRate) << one.bytes.toHex().constData();
    EXPECT_EQ(header.getFrequency(), one.frequency) << one.bytes.toHex().constData();
    EXPECT_EQ(header.getChannels(), one.channels) << one.bytes.toHex().constData();
    EXPECT_EQ(header.getSeconds(), one.bitRate > 0 ? 20004 * 8 / (one.bitRate * 1000) : 0);
  }
}

TEST_F(MPEGHeader, AXingHeaderTellsTheLengthWhereItStands) {
  const QByteArray mono("\xFF\xFB\x90\xC3", 4), half("\xFF\xF3\x90\x00", 4), halfMono("\xFF\xF3\x90\xC3", 4);
  const struct {
    QByteArray header;
    int place;
    quint32 flags, count;
    bool found;
  } cases[] = {{kHeader, 36, 1, 1000, true},  {mono, 21, 1, 1000, true},
               {half, 17, 1, 1000, true},     {halfMono, 14, 1, 1000, true},
               {kHeader, 21, 1, 1000, false}, {kHeader, 36, 2, 1000, false},
               {kHeader, 36, 1, 0, false},    {kHeader, 36, 1, 0x80000000, false}};
  for (const auto &one : cases) {
    const QByteArray bytes = xing(one.header, one.place, one.flags, one.count);
    ASSERT_TRUE(open(QByteArray(1, '\0') + bytes + QByteArray(20000 - bytes.size(), '\0')));
    EXPECT_EQ(header.getXINGHeaderFound(), one.found) << one.place << ' ' << one.count;
    if (!one.found) continue;
    EXPECT_EQ(header.getSeconds(), 26);
    EXPECT_EQ(header.getBitRate(), (20000LL * 7952 / 26000 + 500) / 1000);
  }
}

TEST_F(MPEGHeader, SecondsAreWrittenFromTheirLargestUnit) {
  const std::pair<quint32, QString> cases[] = {
      {1000, u"26"_qs}, {2400, u"1:02"_qs}, {137700, u"1:0:01"_qs}, {3303150, u"1:0:0:00"_qs}};
  for (const auto &[count, text] : cases) {
    ASSERT_TRUE(open(QByteArray(1, '\0') + xing(kHeader, 36, 1, count) + QByteArray(20000, '\0')));
    EXPECT_EQ(header.getSecondsString(), text);
  }
  EXPECT_EQ(header.getFrequencyString(), u"44,100 kHz"_qs);
  EXPECT_TRUE(header.getEncodingString().startsWith(u"MPEG 1, Layer 3, "_qs));
  EXPECT_TRUE(header.getEncodingString().endsWith(u"bps, 44100Hz, Stereo."_qs));
}

}  // namespace
