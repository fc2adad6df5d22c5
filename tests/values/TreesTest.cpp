#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "values/Keys.h"
#include "values/Value.h"

namespace {

/// Dictionaries and arrays by turns, one inside the other, a number in the innermost.
Value deepTree(int levels, int bottom) {
  Value inner = bottom;
  for (int level = 0; level < levels; ++level) {
    if (level % 2) {
      const Array outer = Array::make();
      outer.append(inner);
      inner = outer;
    } else {
      const Dictionary outer = Dictionary::make();
      outer.set(keys::Folder, inner);
      inner = outer;
    }
  }
  return inner;
}

TEST(Trees, DepthCostsNoCallStack) {
  constexpr int kDeep = 200000;
  const Value tree = deepTree(kDeep, 1);
  const Value copy = copyTree(tree);
  EXPECT_TRUE(isEqual(tree, copy));
  EXPECT_FALSE(isEqual(tree, deepTree(kDeep, 2)));
  EXPECT_FALSE(isEqual(tree, deepTree(kDeep - 2, 1)));
}

TEST(Trees, ACopySharesNothingObservableAndKeepsEachFlag) {
  const Dictionary track = Dictionary::make();
  track.set(keys::Name, QStringLiteral("a"));
  track.freeze();
  const Array list = Array::make();
  list.append(track);
  list.append(Value());
  list.append(Array::make());
  QList<std::pair<qsizetype, qsizetype>> missing;
  const Array copy = copyTree(list, [&](qsizetype index, qsizetype size) {
                       missing.append({index, size});
                     }).toArray();
  ASSERT_EQ(copy.size(), 2);
  EXPECT_EQ(missing, (QList<std::pair<qsizetype, qsizetype>>{{1, 3}}));
  EXPECT_FALSE(copy.at(0).toDictionary().isSame(track));
  EXPECT_FALSE(copy.at(0).toDictionary().isMutable());
  copy.at(1).toArray().append(1);
  EXPECT_TRUE(list.at(2).toArray().isEmpty());
}

TEST(Trees, EqualityIsByContentAndOrderOfKeysIsNone) {
  const Dictionary one = Dictionary::make(), other = Dictionary::make();
  one.set(keys::Name, QStringLiteral("a"));
  one.set(keys::Year, 1999);
  other.set(keys::Year, 1999.0);
  other.set(keys::Name, QStringLiteral("a"));
  EXPECT_TRUE(isEqual(one, other));
  other.set(keys::Artist, true);
  EXPECT_FALSE(isEqual(one, other));
  one.set(keys::Album, true);
  EXPECT_FALSE(isEqual(one, other));
  EXPECT_FALSE(isEqual(Array::make(), Dictionary::make()));
  EXPECT_FALSE(isEqual(QStringLiteral("1"), 1));
}

TEST(Trees, LeavesRankByTypeThenWorth) {
  const Value rising[] = {{},
                          std::nan(""),
                          -1e300,
                          -1,
                          false,
                          0.5,
                          true,
                          9007199254740992.0,
                          qint64(9007199254740993),
                          9007199254740994.0,
                          std::numeric_limits<qint64>::max(),
                          9223372036854775808.0,
                          QStringLiteral(""),
                          QStringLiteral("B"),
                          QStringLiteral("a"),
                          Date{1.0},
                          Date{1.5},
                          QByteArray("\x01"),
                          QByteArray("\xFF"),
                          Array::make(),
                          Dictionary::make()};
  for (size_t a = 0; a < std::size(rising); ++a) {
    for (size_t b = 0; b < std::size(rising); ++b) {
      const int expected = a < b ? -1 : int(a > b);
      const int found = compare(rising[a], rising[b]);
      EXPECT_EQ((found > 0) - (found < 0), expected) << a << " and " << b;
    }
  }
}

TEST(Values, TextsReadAsNumbersByTheirFront) {
  const struct {
    const char16_t *text;
    qint64 integer;
    double real;
    bool truth;
  } cases[] = {
      {u"", 0, 0, false},
      {u" 12abc", 12, 12, true},
      {u"-3.5e1x", -3, -35, true},
      {u"+007", 7, 7, true},
      {u"yes", 0, 0, true},
      {u"False", 0, 0, false},
      {u"99999999999999999999", std::numeric_limits<qint64>::max(), 1e20, true},
      {u"0", 0, 0, false},
  };
  for (const auto &row : cases) {
    const Value value = QString::fromUtf16(row.text);
    EXPECT_EQ(value.toInteger(), row.integer) << qPrintable(value.toText());
    EXPECT_EQ(value.toDouble(), row.real) << qPrintable(value.toText());
    EXPECT_EQ(value.toBool(), row.truth) << qPrintable(value.toText());
  }
  EXPECT_EQ(Value(1e300).toInteger(), std::numeric_limits<qint64>::max());
  EXPECT_EQ(Value(std::nan("")).toInteger(), 0);
}

TEST(Dates, CalendarDaysRunOnAndComeBackAsText) {
  EXPECT_EQ(Date::fromCivil(2001, 1, 1, 0, 0, 0).seconds, 0.0);
  EXPECT_EQ(Date::fromCivil(2008, 2, 30, 24, 0, 0).toIsoText(), QStringLiteral("2008-03-02T00:00:00Z"));
  EXPECT_EQ(Date::fromCivil(1900, 2, 29, 0, 0, 0).toIsoText(), QStringLiteral("1900-03-01T00:00:00Z"));
  EXPECT_EQ(Date::fromCivil(1, 1, 1, 0, 0, 1).toIsoText(), QStringLiteral("0001-01-01T00:00:01Z"));
  EXPECT_EQ(Date{-0.5}.toIsoText(), QStringLiteral("2000-12-31T23:59:59Z"));
}

}  // namespace
