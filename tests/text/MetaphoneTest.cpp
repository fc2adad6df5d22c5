#include "tests/text/TextFixture.h"
#include "text/Metaphone.h"

namespace {

class Metaphone : public TextFixture {};

TEST_F(Metaphone, AWordHasTheKeyOfItsSound) {
  const std::pair<const char16_t *, const char16_t *> cases[] = {
      {u"x", u"s"},
      {u"xavier", u"ksfr"},
      {u"knight", u"nikt"},
      {u"wright", u"nikt"},
      {u"aeon", u"eon"},
      {u"church", u"krkh"},
      {u"back", u"bkk"},
      {u"bach", u"bkh"},
      {u"smith", u"sm0h"},
      {u"thomas", u"0ms"},
      {u"fish", u"fxh"},
      {u"phone", u"fn"},
      {u"science", u"sns"},
      {u"judge", u"jj"},
      {u"night", u"nkt"},
      {u"though", u"0h"},
      {u"laugh", u"lh"},
      {u"gnome", u"nom"},
      {u"sign", u"sn"},
      {u"signed", u"snt"},
      {u"lamb", u"lm"},
      {u"nation", u"nxn"},
      {u"special", u"spxl"},
      {u"ocean", u"osn"},
      {u"rhythm", u"rhy0m"},
      {u"1999", u"19"},
      {u"abba", u"ab"},
      {u"which", u"wikh"},
      // Nothing left, one letter left, and what stands at an edge.
      {u"", u""},
      {u"   ", u""},
      {u"ae", u"e"},
      {u"b", u"b"},
      {u"mb", u"m"},
      {u"XX", u"s"},
      {u"scia", u"s"},
      {u"ascia", u"as"},
      {u"dge", u"j"},
      {u"asia", u"ax"},
      {u"ago", u"ak"},
      {u"gem", u"jm"},
      {u"w", u"w"},
      {u"owl", u"ol"},
      {u"ahab", u"ahb"},
      {u"ahs", u"as"},
      {u"AC/DC", u"ak/tk"},
      {u"a c d c", u"aktk"},
      {u"agh\u0001", u"ak\u0001"},
      // Letters and their neighbours that the words above do not have.
      {u"pneu", u"ne"},
      {u"rocket", u"rkt"},
      {u"queen", u"kn"},
      {u"jazz", u"js"},
      {u"bomber", u"bmbr"},
      {u"vision", u"fxn"},
      {u"martian", u"mrxn"},
      {u"edgy", u"ejy"},
      {u"budging", u"bjnk"},
      {u"adg", u"atk"},
      {u"cygy", u"syjy"},
      {u"ship", u"xp"},
      {u"ghost", u"kst"},
      {u"ahy", u"ahy"},
      {u"yhs", u"ys"},
      {u"wye", u"wy"}};
  for (const auto &[word, key] : cases)
    EXPECT_EQ(metaphoneWord(QString::fromUtf16(word)), QString::fromUtf16(key))
        << QString::fromUtf16(word).toStdString();
}

TEST_F(Metaphone, AWordOfAnotherScriptHasTheKeyOfItsTransliteration) {
  const std::pair<const char16_t *, const char16_t *> cases[] = {
      {u"Björk", u"bjork"}, {u"ÉCLAIR", u"eclair"}, {u"Кино", u"Kino"}, {u"Æon", u"aeon"}};
  for (const auto &[word, latin] : cases)
    EXPECT_EQ(metaphoneWord(QString::fromUtf16(word)), metaphoneWord(QString::fromUtf16(latin)));
  EXPECT_EQ(metaphoneWord(QStringLiteral("\u00A0\u00A0")), QString());
  EXPECT_EQ(metaphoneWord(QString(QChar(0xD83D))), QString());
}

TEST_F(Metaphone, APhraseKeepsItsBlanks) {
  const struct {
    const char16_t *phrase, *key, *withoutMinor;
  } cases[] = {{u"the rolling stones", u"0 rlnk stns", u"rlnk stns"},
               {u" \tThe Who\u00A0", u"0 wo", u"wo"},
               {u"night  of   a knight", u"nkt  of   a nikt", u"nkt    nikt"},
               {u"ü  thing", u"u  0nk", u"u  0nk"},
               {u"a", u"a", u""},
               {u"night\n", u"nkt\n", u"nkt"},
               {u"", u"", u""}};
  for (const auto &[phrase, key, withoutMinor] : cases) {
    EXPECT_EQ(metaphone(QString::fromUtf16(phrase)), QString::fromUtf16(key));
    EXPECT_EQ(metaphoneNoMinorWords(QString::fromUtf16(phrase)), QString::fromUtf16(withoutMinor));
  }
}

}  // namespace
