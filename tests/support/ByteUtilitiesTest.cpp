#include <gtest/gtest.h>

#include "support/ByteSearch.h"
#include "support/Checksum.h"
#include "support/FormatCount.h"
#include "support/Hexadecimal.h"

TEST(Checksum, IsNotTheUsualOne) {
  EXPECT_EQ(CRC(QByteArrayView()), 0u);
  EXPECT_EQ(CRC(QByteArrayView("\0", 1)), 0u);
  // A bitwise division of the same polynomial, begun at 0 and not inverted.
  quint32 expected = 0;
  for (const char digit : std::string("123456789")) {
    expected ^= quint8(digit);
    for (int bit = 0; bit < 8; ++bit) expected = (expected >> 1) ^ (expected & 1 ? 0xEDB88320u : 0u);
  }
  EXPECT_EQ(CRC(QByteArrayView("123456789")), expected);
  EXPECT_NE(CRC(QByteArrayView("123456789")), 0xCBF43926u);
}

TEST(Hexadecimal, WritesEachByteWithTwoCapitals) {
  const QByteArrayView bytes("\x00\xff\x0a", 3);
  EXPECT_EQ(hexadecimalStringRepresentation(bytes), u"00FF0A"_qs);
  EXPECT_EQ(hexadecimalStringRepresentationWithSpaces(bytes), u"00 FF 0A"_qs);
  EXPECT_EQ(hexadecimalStringRepresentation({}), QString());
  EXPECT_EQ(hexadecimalStringRepresentationWithSpaces({}), QString());
}

TEST(ByteSearch, FindsRunsAtBothEndsAndNothingElse) {
  struct Case {
    QByteArrayView data;
    std::optional<QByteArrayView> pattern;
    bool expected;
  };
  const Case cases[] = {
      {QByteArrayView("abcab"), QByteArrayView("abc"), true},
      {QByteArrayView("abcab"), QByteArrayView("cab"), true},
      {QByteArrayView("abcab"), QByteArrayView("bb"), false},
      {QByteArrayView("abcab"), QByteArrayView("abcabc"), false},
      {QByteArrayView("a\0b", 3), QByteArrayView("\0b", 2), true},
      {QByteArrayView("abc"), QByteArrayView(), true},
      {QByteArrayView(), QByteArrayView(), true},
      {QByteArrayView(), QByteArrayView("a"), false},
      {QByteArrayView("abc"), std::nullopt, false},
  };
  for (const Case &test : cases) EXPECT_EQ(containsData(test.data, test.pattern), test.expected);
}

TEST(FormatCount, ChangesTheUnitATenthBeforeIt) {
  const std::pair<double, const char16_t *> cases[] = {
      {0, u"0.0"},       {1, u"1.0"},     {0.25, u"0.25"}, {1.0 / 3, u"0.33333"}, {0.000001, u"0.0"},
      {909, u"909.0"},   {910, u"0.9K"},  {1500, u"1.5K"}, {908000, u"908.0K"},   {1e6, u"1.0M"},
      {2.35e9, u"2.4G"}, {1e12, u"1.0T"}, {5e15, u"5.0P"}, {-5000, u"-5000.0"},
  };
  for (const auto &[value, text] : cases) EXPECT_EQ(formatCount(value), QStringView(text)) << value;
}
