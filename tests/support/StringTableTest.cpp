#include "support/StringTable.h"

#include "tests/fixtures/TestPlatform.h"

using StringTables = TestPlatform;

TEST_F(StringTables, ABrokenLineCostsItselfOnly) {
  QStringList problems;
  const StringTable table = StringTable::parse(
      "/* a comment with \"quotes\" = */\n\"first\" = \"one \\\"1\\\"\\n\\\\\"; // behind\n"
      "\"broken\" \"no sign\";\nrubbish\n\"empty\" = \"\";\n\"split\"\n = \n\"over lines\";\n\"cut\" = \"no "
      "end",
      &problems);
  EXPECT_EQ(table.text(u"first"_qs), u"one \"1\"\n\\"_qs);
  EXPECT_EQ(table.text(u"split"_qs), u"over lines"_qs);
  EXPECT_TRUE(table.text(u"empty"_qs).isEmpty() && !table.text(u"empty"_qs).isNull());
  EXPECT_TRUE(table.text(u"broken"_qs).isNull() && table.text(u"cut"_qs).isNull());
  ASSERT_EQ(problems.size(), 3);
  EXPECT_TRUE(problems[0].startsWith(u"line 3 ")) << problems[0].toStdString();
  EXPECT_TRUE(problems[2].startsWith(u"line 9 ")) << problems[2].toStdString();
}

TEST_F(StringTables, AMissingTableOrKeyGivesTheKeyAndOneLineInTheLog) {
  services.bundle.resourceFolder = folder(u"resources"_qs);
  setPlatform(services);
  writeFile(u"resources/strings/en/Localizable.strings"_qs, "\"greeting\" = \"hello\";");
  EXPECT_EQ(tableText(u"greeting"_qs), u"hello"_qs);
  EXPECT_EQ(tableText(u"farewell"_qs), u"farewell"_qs);
  EXPECT_EQ(tableText(u"farewell"_qs), u"farewell"_qs);
  EXPECT_EQ(logText().count(u"farewell"), 1);
  EXPECT_EQ(tableText(u"greeting"_qs, u"None"_qs), u"greeting"_qs);
  EXPECT_TRUE(logContains(u"None.strings"_qs));
}
