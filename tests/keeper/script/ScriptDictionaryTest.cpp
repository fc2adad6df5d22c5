#include "keeper/script/ScriptDictionary.h"

#include <gtest/gtest.h>

TEST(ScriptDictionary, TheLongestTermWinsAndAPropertyBeatsAClassOfItsName) {
  ScriptDictionary words;
  words.addProperty(QStringLiteral("album artist"));
  words.addProperty(QStringLiteral("album"));
  words.addProperty(QStringLiteral("artwork"));
  words.addClass({QStringLiteral("artwork"), QStringLiteral("artworks"), {}});
  const ScriptDictionary::Term artist =
      words.longestTerm({QStringLiteral("album"), QStringLiteral("artist"), QStringLiteral("of")});
  EXPECT_EQ(artist.meaning, QStringLiteral("album artist"));
  EXPECT_EQ(artist.words, 2);
  EXPECT_EQ(words.longestTerm({QStringLiteral("album"), QStringLiteral("of")}).words, 1);
  EXPECT_EQ(words.longestTerm({QStringLiteral("artist")}).kind, ScriptDictionary::Kind::None);
  EXPECT_EQ(words.longestTerm({QStringLiteral("artwork")}).kind, ScriptDictionary::Kind::Property);
  EXPECT_EQ(words.longestTerm({QStringLiteral("artworks")}).kind, ScriptDictionary::Kind::Plural);
}
