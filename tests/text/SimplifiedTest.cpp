#include <thread>

#include "tests/text/TextFixture.h"
#include "text/PlainAscii.h"
#include "text/Words.h"

namespace {

class Simplified : public TextFixture {};

Dictionary table(std::initializer_list<std::pair<QString, QString>> pairs) {
  const Dictionary made = Dictionary::make();
  for (const auto &[key, value] : pairs) made.set(Key(key), Value(value));
  return made;
}

/// The rules in plain steps, over Qt's own replacement.
QString plainly(const QString &text, const Dictionary &simplifiers, bool trailingS) {
  if (text.isEmpty()) return text;
  QString working = u' ' + text + u' ';
  for (const QString &word : minorWords())
    working.replace(u' ' + word + u' ', QStringLiteral(" "), Qt::CaseInsensitive);
  working = u' ' + plainASCIIString(working.trimmed()) + u' ';
  std::vector<std::pair<QString, QString>> rows;
  const QString plural = QStringLiteral("s "), blank = QStringLiteral(" ");
  for (const DictionaryEntry &entry : simplifiers) {
    const bool isPlural = entry.key.text() == plural;
    if (!isPlural || trailingS) rows.emplace_back(entry.key.text(), isPlural ? blank : entry.value.toText());
  }
  if (trailingS && !simplifiers.contains(Key(plural))) rows.emplace_back(plural, blank);
  std::stable_sort(rows.begin(), rows.end(),
                   [](const auto &a, const auto &b) { return a.first.size() > b.first.size(); });
  for (const auto &[key, value] : rows) working.replace(key, value, Qt::CaseInsensitive);
  QString key;
  for (const QChar c : working) {
    if (c.unicode() < 0x80 && c.isLetterOrNumber()) key += c.toLower();
  }
  return key.isEmpty() ? text.toLower() : key;
}

TEST_F(Simplified, NamesGetTheKeysThatDecideWhatIsTheSame) {
  const struct {
    const char16_t *name, *key;
  } cases[] = {{u"", u""},
               {u"The The", u"the"},
               {u"A", u"a"},
               {u"!!!", u"!!!"},
               {u"???", u"???"},
               {u"Björk", u"bjork"},
               {u"BJO\u0308RK", u"bjork"},
               {u"Motörhead", u"motorhead"},
               {u"Sgt Pepper", u"sgtpepper"},
               {u"Of the and A Day", u"day"},
               {u"Iſ it", u"it"},
               {u"Rain i\u017F Here", u"rainhere"},
               {u"\u3000Ænima\u2028", u"aenima"},
               {u"Виктор Цой", u"viktorcoj"},
               {u"\U0001F600", u"\U0001F600"},
               {u"♥É", u"e"}};
  for (const auto &[name, key] : cases)
    EXPECT_EQ(simplified(QString::fromUtf16(name)), QString::fromUtf16(key))
        << QString::fromUtf16(name).toStdString();
}

TEST_F(Simplified, PluralsLoseTheirSOnlyBeforeABlank) {
  setSimplifiersDictionaryRemoveTrailingS({}, true);
  EXPECT_EQ(simplified(QStringLiteral("Beatles")), QStringLiteral("beatle"));
  EXPECT_EQ(simplified(QStringLiteral("Boys, Girls")), QStringLiteral("boysgirl"));
  EXPECT_EQ(simplified(QStringLiteral("s")), QStringLiteral("s"));
  setSimplifiersDictionaryRemoveTrailingS(table({{QStringLiteral("s "), QStringLiteral("z ")}}), false);
  EXPECT_EQ(simplified(QStringLiteral("Beatles")), QStringLiteral("beatles"));
}

TEST_F(Simplified, ALaterKeyMatchesWhatAnEarlierOnePutIn) {
  setSimplifiersDictionaryRemoveTrailingS(
      table({{QStringLiteral("PT"), QStringLiteral("q")}, {QStringLiteral("part"), QStringLiteral("pT")}}),
      false);
  EXPECT_EQ(simplified(QStringLiteral("Part One")), QStringLiteral("qone"));
}

TEST_F(Simplified, ASpelledOutSignReachesLaterKeysThoughItIsNoAscii) {
  // The Kelvin sign is no letter of a key, but it is a k to a later search.
  setSimplifiersDictionaryRemoveTrailingS(
      table({{QStringLiteral("xx"), QStringLiteral("\u212A")}, {QStringLiteral("k"), QStringLiteral("7")}}),
      false);
  EXPECT_EQ(simplified(QStringLiteral("axxb")), QStringLiteral("a7b"));
  setSimplifiersDictionaryRemoveTrailingS(table({{QStringLiteral("xx"), QStringLiteral("\u212A")}}), false);
  EXPECT_EQ(simplified(QStringLiteral("axxb")), QStringLiteral("ab"));
}

TEST_F(Simplified, EqualsThePlainStepsOnRandomTextsAndTables) {
  const QString letters = QStringLiteral("aAbBsS  .&'é\u017F\u212A"),
                keyLetters = QStringLiteral("aBs .&\u017F");
  for (int round = 0; round < 400; ++round) {
    const Dictionary simplifiers = Dictionary::make();
    const bool wide = round % 4 == 0, trailingS = round % 2 == 0;
    for (int left = round % 90; left > 0; --left) {
      const QString key = randomText(keyLetters, 4);
      if (!key.isEmpty())
        simplifiers.set(Key(key), Value(randomText(wide ? letters : QStringLiteral("aBs &"), 3)));
    }
    setSimplifiersDictionaryRemoveTrailingS(simplifiers, trailingS);
    for (int names = 0; names < 40; ++names) {
      const QString name = randomText(letters + QStringLiteral("the of"), 14);
      ASSERT_EQ(simplified(name), plainly(name, simplifiers, trailingS)) << name.toStdString();
    }
  }
}

TEST_F(Simplified, FourThreadsAgreeWhileTheTableChanges) {
  std::atomic<int> wrong{0};
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&wrong] {
      for (int round = 0; round < 300; ++round) {
        const QString key = simplified(QStringLiteral("Γιάννης Кино Beatles"));
        wrong += key != QStringLiteral("gianneskinobeatles") && key != QStringLiteral("giannekinobeatle");
      }
    });
  }
  for (int round = 0; round < 300; ++round) setSimplifiersDictionaryRemoveTrailingS({}, round % 2 == 0);
  for (std::thread &thread : threads) thread.join();
  EXPECT_EQ(wrong, 0);
}

TEST_F(Simplified, AnAbsentTextEqualsNothingAndHasNoKey) {
  EXPECT_FALSE(isSimpleEqualTo(QStringLiteral(""), QString()));
  EXPECT_TRUE(isSimpleEqualTo(QStringLiteral("The Beatles"), QStringLiteral("beatles!")));
  EXPECT_TRUE(simplifiedValue(Value()).isNull());
}

}  // namespace
