#include "text/Levenshtein.h"

#include "support/Workers.h"
#include "tests/fixtures/TestPlatform.h"

namespace {

class Levenshtein : public TestPlatform {};

TEST_F(Levenshtein, AWordsDistanceCountsEdits) {
  const struct {
    const char16_t *text, *other;
    float distance;
  } cases[] = {{u"", u"abc", 0},           {u"abc", u"", 0},           {u"flaw", u"lawn", 2},
               {u"ab", u"ba", 2},          {u"Ab", u"ab", 1},          {u"a", u"abcdef", 5},
               {u"kitten", u"sitting", 3}, {u"sitting", u"kitten", 3}, {u"\U0001F600", u"\U0001F601", 1}};
  for (const auto &[text, other, distance] : cases)
    EXPECT_EQ(levenshteinCompareWithWord(QString::fromUtf16(text), QString::fromUtf16(other)), distance);
}

TEST_F(Levenshtein, HugeWordsNeedNoHugeMemory) {
  EXPECT_EQ(levenshteinCompareWithWord(QStringLiteral("a"), QString(10'000'000, u'b')), 10'000'000.0F);
  EXPECT_EQ(levenshteinCompareWithWord(QString(5000, u'a'), QString(6000, u'a')), 1000.0F);
}

TEST_F(Levenshtein, PhrasesCompareByTheirNearestWords) {
  const struct {
    const char16_t *text, *other;
    float result;
  } cases[] = {{u"Hello World", u"hello world", 0},
               {u"hello world", u"world hello", 0.042F},
               {u"abc", u"   ", 42},
               {u"   ", u"abc", 42},
               {u"   ", u"\t", 0.042F},
               {u"", u"", 0},
               {u"Abc xy", u"abd zzz XY", 0.5F},
               {u"abd zzz XY", u"Abc xy", 4 / 3.0F},
               {u"straße", u"STRASSE", 2}};
  for (const auto &[text, other, result] : cases)
    EXPECT_EQ(levenshteinComparePhrase(QString::fromUtf16(text), QString::fromUtf16(other), 60), result)
        << QString::fromUtf16(text).toStdString();
}

/// A clock that moves one second each time somebody looks at it.
class CountingClock : public Clock {
 public:
  Date now() const override { return Date{double(seconds++)}; }
  void sleep(double) override {}
  mutable int seconds = 0;
};

TEST_F(Levenshtein, WhatTheTimeAllowsIsSpreadOverTheWholeText) {
  CountingClock clock;
  services.clock = &clock;
  setPlatform(services);
  // The word at each place is as far from the other text as its place says.
  QStringList words;
  for (int place = 0; place < 250; ++place) words += QString(place + 1, u'x') + u'o';
  const int order[] = {0, 100, 200, 1, 101, 201, 2};
  float sum = 0;
  for (int visited = 1; visited <= 7; ++visited) {
    sum += float(order[visited - 1] + 1);
    EXPECT_EQ(levenshteinComparePhrase(words.join(u' '), QStringLiteral("o"), float(visited - 1)),
              sum / float(visited));
  }
  EXPECT_EQ(levenshteinComparePhrase(words.join(u' '), QStringLiteral("o"), 1000), 125.5F);
}

TEST_F(Levenshtein, NoTimeIsOverAfterOneWordEvenIfTheClockStands) {
  for (const float none : {0.0F, -1.0F, std::nanf("")})
    EXPECT_EQ(levenshteinComparePhrase(QStringLiteral("ab zzzz"), QStringLiteral("ac"), none), 1.0F);
}

TEST_F(Levenshtein, TheObserverHearsOnceOnTheMainThread) {
  Workers workers;
  QList<float> heard;
  const auto notify = [&](float result) {
    EXPECT_TRUE(time.isMainThread());
    heard += result;
  };
  for (const char16_t *other : {u"Hello world", u"hello there"}) {
    ASSERT_TRUE(asyncLevenshteinCompareWithStringMaxSecondsNotifySelector(
        QStringLiteral("hello World"), QString::fromUtf16(other), 1, notify, workers));
    EXPECT_TRUE(time.runUntil([&] { return workers.running() == 0; }));
  }
  EXPECT_EQ(heard, (QList<float>{0, 2}));
}

}  // namespace
