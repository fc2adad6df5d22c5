#include "audio/tags/FrameIDs.h"
#include "audio/tags/TextDecoders.h"
#include "audio/tags/TextEncoders.h"
#include "tests/audio/ID3Builder.h"
#include "tests/fixtures/TestPlatform.h"

using id3::bytes;
using ID3Texts = TestPlatform;

TEST_F(ID3Texts, TextsOfVersion1LoseTheirTailAndFallBackOnLatin1) {
  const struct {
    QByteArray data;
    qint64 max;
    QString text;
  } cases[] = {
      {"abc", 2, u"ab"_qs},
      {bytes("ab\0cd"), 9, u"ab"_qs},
      {"ab \t\x01", 9, u"ab"_qs},
      {"  \t", 9, {}},
      {"", 9, {}},
      {"\xC3\xA9", 9, u"é"_qs},
      {"\xE9t\xE9", 9, u"été"_qs},
      {"\xC3\xA9", 1, QString(QChar(0xC3))},
      {"\xEF\xBB\xBFZ", 9, QString(QChar(0xFEFF)) + u'Z'},
      {"\xED\xA0\x80", 9, u"\u00ED\u00A0\u0080"_qs},
  };
  for (const auto &each : cases) {
    const QString text = id3text::id3v1StringInAtOffsetMaxLength("x" + each.data, 1, each.max);
    EXPECT_EQ(text, each.text) << each.data.toHex().toStdString();
    EXPECT_EQ(text.isNull(), each.text.isNull());
  }
}

TEST_F(ID3Texts, TextsOfVersion22EndWithTheirFrame) {
  const struct {
    QByteArray data;
    quint8 encoding;
    QString text;
  } cases[] = {
      {bytes("ab\0cd"), 0, u"ab"_qs},
      {"", 0, u""_qs},
      {bytes("\xFF\xFEx\0\0\0"), 1, u"x"_qs},
      {bytes("\0a\0b\0"), 1, u"ab"_qs},  // an odd last byte
      {bytes("\xFE\xFF"), 1, u""_qs},
      {bytes("\xFE\xFF\xD8\0"), 1, QString(QChar(0xD800))},
      {bytes("\0a\0\0\0b"), 7, QString::fromUtf16(u"a\0b", 3)},
  };
  for (const auto &each : cases) {
    const QString text =
        id3text::id3v22StringInAtOffsetEncodingMaxLength(each.data, 0, each.encoding, each.data.size());
    EXPECT_EQ(text, each.text) << each.data.toHex().toStdString();
    EXPECT_FALSE(text.isNull());
  }
}

TEST_F(ID3Texts, TextsOfVersion23TellWhatTheyUsed) {
  const struct {
    QByteArray data;
    qint32 encoding;
    qint64 max;
    QString text;
    qint64 used;
  } cases[] = {
      {bytes("ab\0cd"), 0, 5, u"ab"_qs, 3},
      {"abcd", 0, 2, u"ab"_qs, 2},
      {"ab", 0, 9, u"ab"_qs, 3},  // the data end
      {bytes("\0ab"), 0, 3, {}, 1},
      {"\xC3\xA9", 3, 2, u"é"_qs, 2},
      {"\xE9", 3, 1, {}, 1},
      {"\xE9", 0, 1, u"é"_qs, 1},
      {bytes("\xFF\xFEx\0\0\0zz"), 1, 8, u"x"_qs, 6},
      {bytes("\xFF\xFE\0\0zzzz"), 1, 8, u""_qs, 4},  // a mark alone
      {bytes("\0\0\0a"), 2, 4, {}, 2},
      {bytes("\0a\0b\0c\0d"), 2, 4, u"ab"_qs, 6},
      {bytes("\0a\0b\0c\0d"), 2, 3, u"ab"_qs, 6},  // an odd limit
      {bytes("\0a\0b\0c"), 2, 6, u"ab"_qs, 6},     // the last unit is not reached
      {"ab", 4, 2, {}, 2},
  };
  for (const auto &each : cases) {
    qint64 used = each.max;
    const QString text = id3text::id3v23StringInAtOffsetEncodingMaxLength(each.data, 0, each.encoding, used);
    EXPECT_EQ(text, each.text) << each.data.toHex().toStdString();
    EXPECT_EQ(text.isNull(), each.text.isNull()) << each.data.toHex().toStdString();
    EXPECT_EQ(used, each.used) << each.data.toHex().toStdString();
  }
}

TEST_F(ID3Texts, AFrameWithoutAnEncodingKeepsItsFirstLetter) {
  const auto texts = [](const QByteArray &data) {
    return id3text::id3v23StringsInWithinRange(data, 0, data.size());
  };
  EXPECT_EQ(texts("Hello"), QStringList(u"Hello"_qs));
  EXPECT_EQ(texts(bytes("\x1FJello")), QStringList(u"Jello"_qs));
  EXPECT_EQ(texts(bytes("\0\0A\0\0B\0")), QStringList({u"A"_qs, u"B"_qs}));
  EXPECT_EQ(texts(bytes("\1\xFE\xFF\0A\0\0\xFF\xFEX\0\0\0")), QStringList({u"A"_qs, u"X"_qs}));
  EXPECT_EQ(texts({}), QStringList());
  EXPECT_EQ(id3text::id3v23StringsInWithinRange("abc", 2, 2), QStringList());
  const QString log = logText();
  EXPECT_TRUE(log.contains(u"id3v23StringsIn encoding 72 (no encoding byte)"_qs));
  EXPECT_TRUE(log.contains(u"id3v23StringsIn encoding 31 treated as encoding 0"_qs));
  EXPECT_TRUE(log.contains(u": 3 bytes> @ {2, 2}"_qs));
}

TEST_F(ID3Texts, LyricsComeInThreeParts) {
  const struct {
    QByteArray data;
    QString lang, desc, text;
  } cases[] = {
      {bytes("\0engabout\0\0\0la"), u"eng"_qs, u"about"_qs, u"la"_qs},
      {bytes("\0eng\0l"), {}, {}, {}},  // too short
      {bytes("\3en\xE9\0lala"), {}, {}, u"lala"_qs},
      {bytes("\1eng\xFF\xFE\0\0\xFF\xFEl\0a\0\0\0"), u"eng"_qs, {}, u"la"_qs},
      {bytes("\0engabout\0"), {}, {}, {}},
      {bytes("\4engabout\0la"), {}, {}, {}},
  };
  for (const auto &each : cases) {
    const TextBlock block = id3text::textBlockInWithinRange(each.data, 0, each.data.size());
    EXPECT_EQ(block.lang, each.lang) << each.data.toHex().toStdString();
    EXPECT_EQ(block.desc, each.desc) << each.data.toHex().toStdString();
    EXPECT_EQ(block.text, each.text) << each.data.toHex().toStdString();
  }
  EXPECT_TRUE(logContains(u"textBlockIn encoding 4"_qs));
}

TEST_F(ID3Texts, OldIdsHaveNewOnes) {
  const std::pair<QByteArray, QByteArray> cases[] = {{"TT2", "TIT2"}, {"PIC", "APIC"}, {"TYE", "TYER"},
                                                     {"COM", "COMM"}, {"TT3", "TIT3"}, {"XYZ", "XYZ"},
                                                     {"TIT3", "TIT3"}};
  for (const auto &[id, expected] : cases) EXPECT_EQ(frameids::frameIDUpgrade(id), expected);
  EXPECT_EQ(frameids::internalRecognizedFrameIDs().size(), 21);
}

TEST_F(ID3Texts, UnicodeIsWrittenWithAMark) {
  EXPECT_EQ(id3text::bigEndianUnicodeData({}), bytes("\xFE\xFF"));
  EXPECT_EQ(id3text::bigEndianUnicodeData(u"a\u20AC"_qs), bytes("\xFE\xFF\0a\x20\xAC"));
  EXPECT_EQ(id3text::lossyLatin1(u"é\u20AC"_qs), QByteArray("\xE9?"));
  EXPECT_FALSE(id3text::exactLatin1(u"\u20AC"_qs));
}
