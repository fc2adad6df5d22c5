#include "tests/text/TextFixture.h"
#include "text/AmpersandCodes.h"
#include "text/Characters.h"
#include "text/Enclosed.h"
#include "text/PlistDate.h"
#include "text/Search.h"
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
               {u"&#000000065;",
                u"\x0006"
                u"5;"},
               {u"&AMP;&apos;&percnt;&supl;&Eacute;&eacute;", u"&'%¹Éé"},
               {u"&&lt;&", u"&<&"}};
  for (const auto &[text, decoded] : cases)
    EXPECT_EQ(stringByReplacingAmpersandCodes(QString::fromUtf16(text)), QString::fromUtf16(decoded));
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
