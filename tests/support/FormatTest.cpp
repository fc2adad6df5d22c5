#include "support/Format.h"

#include <gtest/gtest.h>

namespace {

template <class... A>
QString text(const char16_t *format, const A &...arguments) {
  return formatText(QString::fromUtf16(format), {FormatArgument(arguments)...});
}

}  // namespace

TEST(Format, PrintsAsPrintfWhateverTheArgumentsType) {
  EXPECT_EQ(text(u"%d %ld %lld %llu %u", -1, 5L, qint64(1) << 40, ~quint64(0), -1),
            u"-1 5 1099511627776 18446744073709551615 4294967295"_qs);
  EXPECT_EQ(text(u"%02X|%5d|%-5d|%.2f|%.1f", 10, 42, 42, 1.005, 2), u"0A|   42|42   |1.00|2.0"_qs);
  EXPECT_EQ(text(u"%d %f %d", 2.9, 3, true), u"2 3.000000 1"_qs);
  EXPECT_EQ(text(u"100%% of %s", "caf\xc3\xa9"), u"100% of caf\u00e9"_qs);
  EXPECT_EQ(text(u"%2$@ by %1$@", u"A"_qs, u"B"_qs), u"B by A"_qs);
}

TEST(Format, NeverReadsWhatIsNotThere) {
  EXPECT_EQ(text(u"%d %@ %", 1), u"1 %@ %"_qs);
  EXPECT_EQ(text(u"%y %9$@", 1), u"%y %9$@"_qs);
  EXPECT_EQ(text(u"%@ is %@", u"%@"_qs, u"done"_qs), u"%@ is done"_qs);
  EXPECT_EQ(text(u"%d", u"12 songs"_qs), u"12"_qs);
  EXPECT_EQ(text(u"%.99999f", 1.0).size(), 1002);
}

TEST(Format, ObjectsDescribeThemselves) {
  const Dictionary track = Dictionary::make();
  track.set(Key(u"Name"), u"Song"_qs);
  track.set(Key(u"Year"), 1999);
  const Array list = Array::make();
  list.append(track);
  list.append(0.5);
  EXPECT_EQ(text(u"%@ %@", list, QString()), u"({Name = Song; Year = 1999}, 0.5) (null)"_qs);
  EXPECT_EQ(text(u"%@ %@", Date::fromCivil(2008, 2, 29, 12, 0, 1), QByteArray("x")),
            u"2008-02-29 12:00:01 +0000 x"_qs);
  EXPECT_EQ(text(u"%@ %@", Value(), QStringList{u"a"_qs, u"b"_qs}), u"(null) (a, b)"_qs);
  Value deep = Array::make();
  for (int depth = 0; depth < 300000; ++depth) {
    const Array outer = Array::make();
    outer.append(deep);
    deep = outer;
  }
  EXPECT_EQ(text(u"%@", deep).size(), 100001);
}
