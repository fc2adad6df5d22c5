#include <QPushButton>

#include "tests/desktop/DesktopFixture.h"

using Sheets = DesktopFixture;

namespace {
const Alert kAlert{
    u"Key"_qs, u"A title"_qs, u"A message that says what is the case."_qs, {u"Go On"_qs, u"Cancel"_qs}};
}

TEST_F(Sheets, ReturnIsTheDefaultButtonAndEscapeTheSecond) {
  view.showProblemWindow();
  for (const auto &[key, expected] : {std::pair(Qt::Key_Return, 0), std::pair(Qt::Key_Escape, 1)}) {
    int answer = -1;
    view.beginSheet(kAlert, [&answer](int index) { answer = index; });
    ASSERT_TRUE(sheet());
    EXPECT_TRUE(view.hasSheet());
    QTest::keyClick(sheet(), key);
    EXPECT_EQ(answer, expected);
    EXPECT_FALSE(view.hasSheet());
  }
}

TEST_F(Sheets, AnAlertAnswersTheButtonPressed) {
  view.showProblemWindow();
  for (const int index : {1, 0}) {
    answerNextAlert(index);
    EXPECT_EQ(view.runAlert(kAlert), index);
  }
}

TEST_F(Sheets, EndingAllSheetsAnswersNone) {
  view.showProblemWindow();
  view.beginProgressSheet();
  bool answered = false;
  view.beginSheet(kAlert, [&answered](int) { answered = true; });
  view.endAllSheets();
  EXPECT_FALSE(view.hasSheet());
  EXPECT_FALSE(answered);
}
