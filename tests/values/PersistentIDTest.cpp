#include "values/PersistentID.h"

#include <gtest/gtest.h>

TEST(PersistentID, IsWrittenWithSixteenDigitsAndReadWithUpToSixteen) {
  const std::pair<quint64, QString> cases[] = {{255, u"00000000000000FF"_qs},
                                               {~quint64(0), u"FFFFFFFFFFFFFFFF"_qs}};
  for (const auto &[id, text] : cases) {
    EXPECT_EQ(hexPersistentID(id), text);
    EXPECT_EQ(persistentIDOfText(text.toLower()), id);
    EXPECT_TRUE(isPersistentID(text));
  }
  EXPECT_EQ(persistentIDOfText(u"fF"), 255u);
  for (const QString &wrong :
       {u""_qs, u" 1"_qs, u"0x1"_qs, u"-1"_qs, u"G"_qs, u"\u0661"_qs, QString(17, u'0')})
    EXPECT_FALSE(persistentIDOfText(wrong)) << wrong.toStdString();
  for (const QString &wrong : {u"fF"_qs, u"000000000000000G"_qs, QString(17, u'0')})
    EXPECT_FALSE(isPersistentID(wrong)) << wrong.toStdString();
}
