#include <QPushButton>
#include <QScrollBar>

#include "desktop/SheetText.h"
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

TEST_F(Sheets, TextsAreShownWholeOrScrolled) {
  showDuplicates(3);
  for (const QString &message : {u"One line."_qs, u"Several words that take some lines. "_qs.repeated(12),
                                 u"/music/"_qs + QString(300, u'x'), u"A line\n"_qs.repeated(60)}) {
    Alert alert = kAlert;
    alert.message = message;
    view.beginSheet(alert, {});
    settle();
    const auto *text = sheet()->findChild<SheetText *>();
    EXPECT_EQ(text->verticalScrollBar()->maximum() > 0, message.count(u'\n') > 50) << message.toStdString();
    EXPECT_LE(text->document()->idealWidth(), text->viewport()->width());
    EXPECT_LE(sheet()->geometry().bottom(), view.problemWindow()->geometry().bottom());
    view.endAllSheets();
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
