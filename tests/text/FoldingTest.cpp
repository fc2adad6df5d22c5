#include "tests/text/TextFixture.h"
#include "text/PlainAscii.h"

namespace {

class Folding : public TextFixture {
 protected:
  void expectSame(const QString &text) {
    ASSERT_EQ(unicode.foldedToAscii(text), unicode.foldedByTransliteration(text)) << text.toStdString();
  }
};

TEST_F(Folding, EveryCodeUnitFoldsAsIcuFoldsIt) {
  for (char32_t code = 0x20; code < 0x10000; ++code) {
    // Ideographs and syllables always take ICU's own road.
    const bool ownRoad = (code >= 0x3400 && code < 0xA000) || (code >= 0xAC00 && code < 0xF900);
    if (!ownRoad) expectSame(QString(QChar(char16_t(code))));
  }
}

TEST_F(Folding, NeighboursNeverChangeAFold) {
  std::vector<QString> alphabets;
  QString latin, all;
  for (char32_t code = 0x20; code < 0x10000; ++code) {
    const QChar unit = QChar(char16_t(code));
    const auto script = unit.script();
    const bool common = script == QChar::Script_Common || script == QChar::Script_Inherited;
    if (unit.isSurrogate()) continue;
    if (common || script == QChar::Script_Latin || script == QChar::Script_Cyrillic) latin += unit;
    if (code < 0x600) all += unit;
  }
  for (int round = 0; round < 40000; ++round) expectSame(randomText(latin, 8));
  for (int round = 0; round < 10000; ++round) expectSame(randomText(all, 8));
}

TEST_F(Folding, AnyTextComesOutAsAscii) {
  EXPECT_EQ(plainASCIIString(QStringLiteral("中島みゆき")), QStringLiteral("zhong daomiyuki"));
  EXPECT_EQ(plainASCIIString(QStringLiteral("½ – «Ð»")), QStringLiteral(" 1/2 - <<D>>"));
  EXPECT_EQ(plainASCIIString(QString(QChar(char16_t(0xD800)))), QString());
  EXPECT_EQ(precomposedBMString(QStringLiteral("Bjo\u0308rk")), QStringLiteral("Björk"));
}

}  // namespace
