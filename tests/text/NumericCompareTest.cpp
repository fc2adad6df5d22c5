#include "text/NumericCompare.h"

#include <gtest/gtest.h>

TEST(NumericCompare, NumbersGoByWorthAndLettersWhateverTheirCase) {
  const struct {
    const char16_t *first, *second;
    int expected;
  } cases[] = {{u"Track 9", u"track 10", -1},
               {u"007", u"7", 0},
               {u"7a", u"007B", -1},
               {u"0", u"00", 0},
               {u"", u"0", -1},
               {u"99999999999999999999999998", u"99999999999999999999999999", -1},
               {u"1.10", u"1.9", 1},
               {u"a1b2", u"a1b", 1},
               {u"ÄRGER", u"ärger", 0},
               {u"12", u"a", -1},
               {u"A", u"a", 0}};
  for (const auto &one : cases) {
    const auto sign = [](int order) { return (order > 0) - (order < 0); };
    EXPECT_EQ(sign(compareByWorth(one.first, one.second)), one.expected)
        << qPrintable(QString::fromUtf16(one.first));
    EXPECT_EQ(sign(compareByWorth(one.second, one.first)), -one.expected)
        << qPrintable(QString::fromUtf16(one.first));
  }
}
