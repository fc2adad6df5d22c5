#include "tests/text/TextFixture.h"
#include "text/AmpersandCodes.h"
#include "text/Characters.h"
#include "text/Enclosed.h"
#include "text/Html.h"
#include "text/PlistDate.h"
#include "text/Search.h"
#include "text/Whitespace.h"
#include "text/Words.h"

namespace {

TEST(AmpersandCodes, OnlyEntitiesAreDecoded) {
  const struct {
    const char16_t *text, *decoded;
  } cases[] = {{u"&amp;lt;", u"&lt;"},
               {u"R&amp B", u"R& B"},
               {u"&unknown; &", u"&unknown; &"},
               {u"&#65;&#x41;&#X41", u"AAA"},
               {u"&#0;&#xFFFFF;&#;&#x;", u"&#0;&#xFFFFF;&#;&#x;"},
               {u"&#150;&#x81;", u"\u2013\u0081"},
               {u"&#127;&#x80;&#X9F;&#160;", u"\u007F\u20AC\u0178\u00A0"},
               {u"&#65535;&#65601;&#99999999", u"\uFFFF&#65601;&#99999999"},
               {u"&frac12;&ampfoo;&Amp;&#", u"½&ampfoo;&Amp;&#"},
               {u"&#x", u"&#x"},
               {u"&#000000065;",
                u"\x0006"
                u"5;"},
               {u"&AMP;&apos;&percnt;&supl;&Eacute;&eacute;", u"&'%¹Éé"},
               {u"&&lt;&", u"&<&"}};
  for (const auto &[text, decoded] : cases)
    EXPECT_EQ(stringByReplacingAmpersandCodes(QString::fromUtf16(text)), QString::fromUtf16(decoded));
  EXPECT_EQ(ampersandCodeEquivalentAtIndexCodeLength(u"a#65;", 0).code, 0);
}

TEST(AmpersandCodes, UnitsAboveTheTildeAreEncoded) {
  const std::pair<const char16_t *, const char16_t *> cases[] = {{u"", u""},
                                                                 {u"<a & b>~", u"<a & b>~"},
                                                                 {u"é\u0100\u007F", u"&eacute;&256;&127;"},
                                                                 {u"¹²", u"&supl;&sup2;"},
                                                                 {u"\U0001F600", u"&55357;&56832;"}};
  for (const auto &[text, encoded] : cases)
    EXPECT_EQ(stringByInsertingAmpersandCodes(QString::fromUtf16(text)), QString::fromUtf16(encoded));
}

TEST(Html, TagsBecomeLines) {
  const std::pair<const char16_t *, const char16_t *> cases[] = {
      {u"", u""},
      {u"a\r\n\t     b", u"a b"},
      {u"a<BR>b<br/>c<Br />d", u"a\nb\nc\nd"},
      {u"<p>One</p>\n<P>Two</P><p>Three", u"One\n\nTwo\n\nThree"},
      {u"a<br><br> <br><br><br>b", u"a\n\nb"},
      {u"<b>R&amp;B</b> &lt;br&gt; <i x=\"1\">live", u"R&B <br> live"},
      {u"a < b", u"a < b"}};
  for (const auto &[html, text] : cases)
    EXPECT_EQ(stringFlowedFromHTML(QString::fromUtf16(html)), QString::fromUtf16(text));
}

TEST(PlistDate, FieldsAreReadByPlaceAndTestedLoosely) {
  EXPECT_EQ(plistDateValue(u"2008-02-30T12:00:00Z"), Date::fromCivil(2008, 3, 1, 12, 0, 0));
  EXPECT_EQ(plistDateValue(u"2008x02x28y24z00w00?"), Date::fromCivil(2008, 2, 29, 0, 0, 0));
  for (const auto *bad :
       {u"", u"2008-02-29T12:00:00", u"0000-02-29T12:00:00Z", u"2008-13-29T12:00:00Z",
        u"2008-02-32T12:00:00Z", u"2008-02-29T25:00:00Z", u"2008-02-29T12:60:00Z", u"2008-02-29T12:00:60Z"})
    EXPECT_FALSE(plistDateValue(bad)) << QString::fromUtf16(bad).toStdString();
}

TEST(Enclosed, EachPairGoesAndNestingIsNotUnderstood) {
  const struct {
    const char16_t *text, *left;
  } cases[] = {
      {u"ab", u"ab"}, {u"(ab", u"(ab"}, {u"a(b)c", u"ac"}, {u"(a(b)c)", u"c)"}, {u")x( y (z) ", u")x"}};
  for (const auto &[text, left] : cases)
    EXPECT_EQ(stringWithStrippedParenthesizedText(QString::fromUtf16(text)), QString::fromUtf16(left));
  EXPECT_EQ(stringWithStrippedBracketedText(QStringLiteral("Song [Live]")), QStringLiteral("Song"));
}

TEST(Words, OnlyWholeWordsGo) {
  EXPECT_EQ(stringWithoutWords(QStringLiteral(" The the The AND is\tThen "), minorWords()),
            QStringLiteral("the is\tThen"));
  EXPECT_EQ(normalizedString(QStringLiteral("Beatles, THE")), QStringLiteral("THE Beatles"));
  EXPECT_EQ(normalizedString(QStringLiteral("Crosby, Stills, The")), QStringLiteral("Crosby, Stills, The"));
}

TEST(Search, FoldingIsOneToOne) {
  EXPECT_TRUE(containsString(QStringLiteral("ΜΟΥΣΙΚΗΣ"), QStringLiteral("μουσικης")));
  EXPECT_TRUE(containsString(QStringLiteral("\U00010400x"), QStringLiteral("\U00010428X")));
  EXPECT_FALSE(containsString(QStringLiteral("straße"), QStringLiteral("STRASSE")));
  EXPECT_FALSE(containsString(QStringLiteral("Bjo\u0308rk"), QStringLiteral("björk")));
  EXPECT_FALSE(containsString(QStringLiteral("a"), QString()));
}

TEST(Search, ReplacingGoesOverTheWholeText) {
  const auto replaced = [](const char16_t *target, const QString &replacement, SearchOption option) {
    return stringByReplacingOccurrencesOfStringWithStringOptions(
        QStringLiteral("Aba aBA"), target ? QString::fromUtf16(target) : QString(), replacement, option);
  };
  EXPECT_EQ(replaced(u"a", QStringLiteral("aa"), SearchOption::Literal), QStringLiteral("Abaa aaBA"));
  EXPECT_EQ(replaced(u"A", QStringLiteral("x"), SearchOption::CaseInsensitive), QStringLiteral("xbx xBx"));
  EXPECT_EQ(replaced(u"a", QString(), SearchOption::Literal), QStringLiteral("Ab BA"));
  for (const auto *absent : {static_cast<const char16_t *>(nullptr), u"", u"c"})
    EXPECT_EQ(replaced(absent, QStringLiteral("x"), SearchOption::Literal), QStringLiteral("Aba aBA"));
}

TEST(Whitespace, LineBreaksAreNotTrimmed) {
  const std::pair<const char16_t *, const char16_t *> cases[] = {{u" \t\u00A0\u3000a b \u2003", u"a b"},
                                                                 {u" \n a \n", u"\n a \n"},
                                                                 {u" \t", u""},
                                                                 {u"\u200Ba", u"\u200Ba"}};
  for (const auto &[text, trimmed] : cases)
    EXPECT_EQ(trimmedOfWhitespace(QString::fromUtf16(text)), QString::fromUtf16(trimmed));
}

TEST(Whitespace, OnlyTwoBlanksInARowAreRedundant) {
  EXPECT_TRUE(containsRedundantWhitespace(QStringLiteral("a  b")));
  for (const auto *text : {u"", u" a b ", u"a\t\tb", u"a \u00A0b"})
    EXPECT_FALSE(containsRedundantWhitespace(QString::fromUtf16(text)));
}

TEST(Whitespace, InvisibleCharactersAreShown) {
  const QString hidden = QStringLiteral("\uFEFFa\u200Bb\u200C\u200D"),
                plain = QStringLiteral("a\u2060b\u00AD");
  EXPECT_TRUE(containsZeroWidthCharacter(hidden));
  EXPECT_EQ(stringWithVisibleZeroWidthCharacters(hidden), QStringLiteral("\u2423a\u2423b\u2423\u2423"));
  EXPECT_FALSE(containsZeroWidthCharacter(plain));
  EXPECT_EQ(stringWithVisibleZeroWidthCharacters(plain), plain);
}

TEST(Enclosed, OnlyAPairOfQuotesAroundSomethingGoes) {
  const std::pair<const char16_t *, const char16_t *> cases[] = {
      {u"\"a\"", u"a"}, {u"\"\"", u"\"\""}, {u"\"\"\"", u"\""}, {u"\"ab", u"\"ab"}, {u"'a'", u"'a'"}};
  for (const auto &[text, bare] : cases)
    EXPECT_EQ(stringByRemovingSurroundingQuotes(QString::fromUtf16(text)), QString::fromUtf16(bare));
}

TEST(Characters, OnlyThePhrasesFirstUnitIsUpperCase) {
  const std::pair<const char16_t *, const char16_t *> cases[] = {
      {u"", u""}, {u"a", u"a"}, {u"hELLO wORLD", u"Hello world"}, {u"éCOLE", u"École"}, {u" ABC", u" abc"}};
  for (const auto &[text, capitalized] : cases)
    EXPECT_EQ(capitalizedPhraseString(QString::fromUtf16(text)), QString::fromUtf16(capitalized));
}

TEST(Characters, CaseAndOrder) {
  EXPECT_EQ(correctedCaseString(QStringLiteral("HELLO o'NEIL")), QStringLiteral("HELLO o'NEIL"));
  EXPECT_EQ(correctedCaseString(QStringLiteral("HELLO O'NEIL")), QStringLiteral("Hello O'neil"));
  EXPECT_EQ(stringByDeletingCharactersInSet(QStringLiteral("a-b_c"), QStringLiteral("-_")),
            QStringLiteral("abc"));
  const struct {
    const char16_t *a, *b;
    int order;
  } cases[] = {{u"a.b", u"a.b", 1}, {u"b", u"a.b", 1},     {u"a.b", u"b", -1}, {u"z.a", u"a.b", -1},
               {u"", u"", 1},       {u"a.bc", u"b.b", -1}, {u"", u"a", 1}};
  for (const auto &[a, b, order] : cases)
    EXPECT_EQ(reversedCompare(QString::fromUtf16(a), QString::fromUtf16(b)), order);
}

}  // namespace
