#include <gtest/gtest.h>

#include <map>
#include <random>

#include "values/Keys.h"
#include "values/Value.h"

namespace {

Key numbered(int number) {
  return Key(QStringLiteral("key %1").arg(number));
}

QStringList keysOf(const Dictionary &dictionary) {
  QStringList texts;
  for (const DictionaryEntry &entry : dictionary) texts.append(entry.key.text());
  return texts;
}

TEST(Keys, EqualTextsAreOneKeyAndAskingMakesNone) {
  EXPECT_EQ(Key(QStringLiteral("Name")), keys::Name);
  EXPECT_FALSE(Key(QStringLiteral("name")) == keys::Name);
  EXPECT_TRUE(Key::find(u"a key that nobody made").isAbsent());
  EXPECT_EQ(Key().text(), QString());
}

TEST(Dictionary, KeepsTheOrderInWhichKeysCame) {
  const Dictionary track = Dictionary::make();
  track.set(keys::Name, QStringLiteral("a"));
  track.set(keys::Artist, QStringLiteral("b"));
  track.set(keys::Album, QStringLiteral("c"));
  track.set(keys::Name, QStringLiteral("again"));
  EXPECT_EQ(keysOf(track),
            QStringList({QStringLiteral("Name"), QStringLiteral("Artist"), QStringLiteral("Album")}));
  track.remove(keys::Name);
  track.set(keys::Name, QStringLiteral("late"));
  EXPECT_EQ(keysOf(track),
            QStringList({QStringLiteral("Artist"), QStringLiteral("Album"), QStringLiteral("Name")}));
  track.set(keys::Artist, Value());
  EXPECT_FALSE(track.contains(keys::Artist));
  EXPECT_TRUE(track.value(Key()).isNull());
}

// Around the size where the index begins, under stores and removals of every kind, against a plain map.
TEST(Dictionary, TheIndexAnswersLikeASearch) {
  std::mt19937 random(7);
  for (const int range : {20, 60, 400}) {
    const Dictionary dictionary = Dictionary::make();
    std::map<int, int> expected;
    for (int step = 0; step < 4000; ++step) {
      const int number = int(random() % unsigned(range));
      if (random() % 3) {
        dictionary.set(numbered(number), step);
        expected[number] = step;
      } else {
        dictionary.remove(numbered(number));
        expected.erase(number);
      }
      if (step % 1000 == 999) {
        dictionary.removeIf([](const DictionaryEntry &entry) { return entry.value.toInteger() % 5 == 0; });
        std::erase_if(expected, [](const auto &entry) { return entry.second % 5 == 0; });
      }
      ASSERT_EQ(dictionary.size(), qsizetype(expected.size()));
    }
    for (int number = 0; number < range; ++number) {
      const auto place = expected.find(number);
      ASSERT_EQ(dictionary.contains(numbered(number)), place != expected.end());
      const qint64 value = dictionary.value(numbered(number)).toInteger();
      ASSERT_EQ(value, place != expected.end() ? place->second : 0);
    }
  }
}

TEST(Dictionary, RemovalsOneByOneFromALargeOneStayCheap) {
  constexpr int kCount = 20000;
  const Dictionary dictionary = Dictionary::make();
  for (int number = 0; number < kCount; ++number) dictionary.set(numbered(number), number);
  for (int number = kCount - 1; number > 0; --number) dictionary.remove(numbered(number));
  EXPECT_EQ(keysOf(dictionary), QStringList(QStringLiteral("key 0")));
}

TEST(Dictionary, TakenEntriesLeaveNoRoomUnusedAndAreFound) {
  for (const int count : {0, 3, 60}) {
    std::vector<DictionaryEntry> entries;
    for (int number = 0; number < count; ++number) entries.push_back({numbered(number), number});
    if (count) entries.back().value = Value(Array::make());
    const Dictionary dictionary = Dictionary::make();
    dictionary.takeEntries(entries);
    EXPECT_EQ(dictionary.size(), count);
    EXPECT_EQ(dictionary.isPlain(), count == 0);
    for (int number = 0; number + 1 < count; ++number) {
      EXPECT_EQ(dictionary.value(numbered(number)).toInteger(), number);
    }
  }
}

TEST(Containers, HoldersOfOneSeeItsChangesAndCopiesDoNot) {
  const Dictionary track = Dictionary::make();
  track.set(keys::Name, QStringLiteral("a"));
  const Dictionary holder = track;
  const Dictionary copy = track.copyMembers(true);
  holder.set(keys::Name, QStringLiteral("b"));
  EXPECT_EQ(track.value(keys::Name).toText(), QStringLiteral("b"));
  EXPECT_EQ(copy.value(keys::Name).toText(), QStringLiteral("a"));
  copy.set(keys::Name, QStringLiteral("c"));
  EXPECT_EQ(track.value(keys::Name).toText(), QStringLiteral("b"));
  EXPECT_TRUE(holder.isSame(track));
  EXPECT_FALSE(copy.isSame(track));

  const Array list = Array::make();
  list.append(1);
  const Array other = list.copyMembers(true);
  other.set(0, 2);
  list.append(3);
  EXPECT_EQ(list.at(0).toInteger(), 1);
  EXPECT_EQ(other.size(), 1);
  other.removeAt(0);
  EXPECT_TRUE(other.isEmpty());
  EXPECT_TRUE(list.at(7).isNull());
}

TEST(Containers, AFrozenOneIsFrozenForAllHoldersAndItsCopyNeedNotBe) {
  const Array list = Array::make();
  const Array holder = list;
  list.append(1);
  holder.freeze();
  EXPECT_FALSE(list.isMutable());
  const Array copy = list.copyMembers(true);
  copy.append(2);
  EXPECT_EQ(copy.size(), 2);
  EXPECT_EQ(list.size(), 1);
  EXPECT_FALSE(copyTree(list).toArray().isMutable());
}

}  // namespace
