#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>

#include "desktop/ToolbarButton.h"
#include "support/Preferences.h"
#include "tests/desktop/DesktopFixture.h"
#include "values/Keys.h"

namespace {

QString label(ProblemWindow *window, const char *tab) {
  return window->findChild<ToolbarButton *>(QStringLiteral("tab-") + QLatin1String(tab))->text();
}

}  // namespace

using ScanWindow = DesktopFixture;

TEST_F(ScanWindow, ShowsTheGroupsOfTheUsersLibrary) {
  writeLibrary(3);
  launch();
  ASSERT_EQ(table().rows().rowCount(), 6);
  EXPECT_EQ(label(view.problemWindow(), "duplicates"), u"Duplicates (6)"_qs);
  EXPECT_EQ(label(view.problemWindow(), "missing"), u"Missing (0)"_qs);
  EXPECT_EQ(view.problemWindow()->page(ProblemTab::Duplicates).summary(),
            u"3 groups of duplicates, 6 songs"_qs);
  const auto stripe = [this](int row) {
    return table().rows().index(row, 0).data(ProblemTableModel::kStripeRole).toBool();
  };
  for (const int first : {0, 2, 4}) {
    const auto marked = [&](int row, int column) {
      return table().rows().index(row, column).data(Qt::CheckStateRole).toInt() == Qt::Checked;
    };
    EXPECT_NE(marked(first, 0), marked(first + 1, 0)) << "one row for the information";
    EXPECT_NE(marked(first, 1), marked(first + 1, 1)) << "one row for the audio";
  }
  EXPECT_EQ(stripe(0), stripe(1));
  EXPECT_NE(stripe(1), stripe(2));
  EXPECT_FALSE(progressSheet());
}

TEST_F(ScanWindow, ExplainsDuplicatesUntilToldNotTo) {
  writeLibrary(1);
  launch();
  ASSERT_TRUE(sheet());
  EXPECT_TRUE(view.hasSheet());
  find<QCheckBox>(sheet(), prefs::explainedDuplicates)->click();
  QTest::keyClick(sheet(), Qt::Key_Escape);
  EXPECT_TRUE(prefs::isTrue(prefs::explainedDuplicates));
  settle();
  application.reloadLibraryAndScan();
  EXPECT_TRUE(runUntil([this] { return !state().mMusicLibraryBusy && !prefs::isTrue(prefs::busy); }));
  settle();
  EXPECT_FALSE(sheet());
}

TEST_F(ScanWindow, CancelEndsTheScanAndKeepsWhatWasFound) {
  prefs::set(prefs::explainedDuplicates, true);
  writeLibrary(2);
  useEndlessScan(8);
  application.controller().awakeFromNib();
  ASSERT_TRUE(runUntil([this] { return table().rows().rowCount() == 8; }));
  ASSERT_TRUE(progressSheet());
  EXPECT_TRUE(view.hasSheet());
  EXPECT_EQ(find<QLabel>(progressSheet(), u"progressSubText"_qs)->text(), u"8 duplicates"_qs);
  auto *note = find<QWidget>(view.preferencesWindow(), u"Prefs-AutomarkChanged"_qs);
  note->findChild<QPushButton *>()->click();
  EXPECT_TRUE(table().rows().row(0).value(keys::markAudio).isNull() &&
              table().rows().row(1).value(keys::markAudio).isNull())
      << "the scan works on these rows";
  QTest::mouseClick(find<QPushButton>(progressSheet(), u"progressCancel"_qs), Qt::LeftButton);
  EXPECT_TRUE(runUntil([this] { return state().mHaveScannedLibraryForProblems; }));
  settle();
  EXPECT_FALSE(progressSheet());
  EXPECT_EQ(table().rows().rowCount(), 8);
  EXPECT_TRUE(logContains(u"doCancelOperation"_qs));
}

TEST_F(ScanWindow, EscapeCancelsOnlyWhileCancelIsEnabled) {
  view.showProblemWindow();
  view.beginProgressSheet();
  view.setCancelEnabled(false);
  QTest::keyClick(progressSheet(), Qt::Key_Escape);
  EXPECT_TRUE(progressSheet());
  EXPECT_FALSE(state().operation.mCancelOperation);
  view.setCancelEnabled(true);
  QTest::keyClick(progressSheet(), Qt::Key_Escape);
  EXPECT_TRUE(progressSheet()) << "only the operation ends its sheet";
  EXPECT_TRUE(state().operation.mCancelOperation);
  view.endProgressSheet();
  EXPECT_FALSE(view.hasSheet());
}

TEST_F(ScanWindow, TellsOfALibraryThatCannotBeRead) {
  const QByteArray damaged = "<plist><dict><key>Music Folder</key><string>file:///x</string><key>Tracks";
  writeFile(u"home/Music/iTunes/iTunes Music Library.xml"_qs, damaged);
  answerNextAlert(0);
  application.controller().awakeFromNib();
  EXPECT_TRUE(runUntil([this] { return view.preferencesWindow()->isVisible(); }));
  settle();
  EXPECT_EQ(alertsAnswered, QStringList(u"BadLibraryTitle"_qs));
  EXPECT_FALSE(progressSheet());
  EXPECT_EQ(view.problemWindow()->page(ProblemTab::Duplicates).currentIndex(), 1);
}

TEST_F(ScanWindow, TheKeyboardReachesEveryTabOnceAScanHasEnded) {
  prefs::set(prefs::explainedDuplicates, true);
  writeLibrary(1);
  launch();
  QApplication::setActiveWindow(view.problemWindow());
  for (const ProblemTab tab : kProblemTabs) {
    QTest::keyClick(view.problemWindow(), Qt::Key(Qt::Key_1 + int(tab)), Qt::ControlModifier);
    EXPECT_EQ(view.currentTab(), tab);
  }
}

TEST_F(ScanWindow, RemembersItsFrameAndClosingItEndsTheApplication) {
  bool ended = false;
  application.controller().onTerminate = [&ended] { ended = true; };
  view.showProblemWindow();
  view.problemWindow()->setGeometry(40, 50, 800, 500);
  view.problemWindow()->close();
  EXPECT_TRUE(ended);
  application.controller().applicationWillTerminate();
  EXPECT_EQ(preference(prefs::problemWinFrame).toText(), u"{{40, 50}, {800, 500}}"_qs);
}
