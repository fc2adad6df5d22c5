#include "tests/text/TextFixture.h"
#include "text/Metaphone.h"

namespace {

class Metaphone : public TextFixture {};

TEST_F(Metaphone, AWordHasTheKeyOfItsSound) {
  const QString words = QStringLiteral(
      u"x=s xavier=ksfr knight=nikt wright=nikt aeon=eon church=krkh back=bkk bach=bkh smith=sm0h "
      u"thomas=0ms fish=fxh phone=fn science=sns judge=jj night=nkt though=0h laugh=lh gnome=nom "
      u"sign=sn signed=snt lamb=lm nation=nxn special=spxl ocean=osn rhythm=rhy0m 1999=19 abba=ab "
      u"which=wikh ae=e b=b mb=m XX=s scia=s ascia=as dge=j asia=ax ago=ak gem=jm w=w owl=ol ahab=ahb "
      u"ahs=as AC/DC=ak/tk pneu=ne rocket=rkt queen=kn jazz=js bomber=bmbr vision=fxn martian=mrxn "
      u"edgy=ejy budging=bjnk adg=atk cygy=syjy ship=xp ghost=kst ahy=ahy yhs=ys wye=wy");
  for (const QString &word : words.split(u' '))
    EXPECT_EQ(metaphoneWord(word.section(u'=', 0, 0)), word.section(u'=', 1)) << word.toStdString();
  const std::pair<const char16_t *, const char16_t *> others[] = {
      {u"", u""}, {u"   ", u""}, {u"a c d c", u"aktk"}, {u"agh\u0001", u"ak\u0001"}};
  for (const auto &[word, key] : others)
    EXPECT_EQ(metaphoneWord(QString::fromUtf16(word)), QString::fromUtf16(key));
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
