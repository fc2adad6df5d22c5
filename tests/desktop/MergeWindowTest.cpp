#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollBar>
#include <QTextDocument>
#include <QTreeWidget>

#include "support/Preferences.h"
#include "tests/desktop/DesktopFixture.h"
#include "values/Keys.h"

namespace {

class MergeWindow : public DesktopFixture {
 protected:
  QPushButton *mergeButton() {
    return find<QPushButton>(view.problemWindow(), QStringLiteral("button-Merge"));
  }
  void markAll() {
    application.doAutomark();
    view.validateProblemUI();
  }
  /// How often a widget is painted while something is done, without any turn of the event loop.
  static int paintsDuring(QWidget *widget, const std::function<void()> &done) {
    struct Counter : QObject {
      int paints = 0;
      bool eventFilter(QObject *, QEvent *event) override {
        paints += event->type() == QEvent::Paint;
        return false;
      }
    } counter;
    widget->installEventFilter(&counter);
    done();
    return counter.paints;
  }
  static Alert question(int safeButton) {
    Alert alert;
    alert.key = alert.title = QStringLiteral("Question");
    alert.buttons = {QStringLiteral("One"), QStringLiteral("Two")};
    alert.suppression = QStringLiteral("Do not ask again");
    alert.suppressionPreference = prefs::noWarnBigPlaylists;
    alert.safeButton = safeButton;
    return alert;
  }
};

}  // namespace

TEST_F(MergeWindow, MergingNeedsAMarkedGroupTheTabAndNoSheet) {
  showDuplicates(12);
  EXPECT_FALSE(mergeButton()->isEnabled()) << "nothing is marked";
  markAll();
  EXPECT_TRUE(mergeButton()->isEnabled());
  view.beginProgressSheet();
  EXPECT_FALSE(mergeButton()->isEnabled()) << "something runs";
  view.endProgressSheet();
  EXPECT_TRUE(mergeButton()->isEnabled());
  view.selectTab(ProblemTab::Names);
  EXPECT_FALSE(mergeButton()->isVisible());
  view.selectTab(ProblemTab::Duplicates);
  application.automark().doUnmark();
  EXPECT_FALSE(mergeButton()->isEnabled()) << "the marks are gone";
}

TEST_F(MergeWindow, ABoxIsStoredByAnAnswerAndNotByTheWayOut) {
  showDuplicates(3);
  const struct {
    int safeButton;
    bool ticks, escapes;
    int presses, answer;
    bool stored;
  } cases[] = {{0, true, true, 0, 0, false},  {0, true, false, 1, 1, true},  {0, false, false, 1, 1, false},
               {-1, true, true, 0, 1, false}, {-1, true, false, 0, 0, true}, {-1, true, false, 1, 1, false}};
  for (const auto &one : cases) {
    prefs::remove(prefs::noWarnBigPlaylists);
    int answer = -1;
    view.beginSheet(question(one.safeButton), [&answer](int index) { answer = index; });
    SheetDialog *const shown = sheet();
    ASSERT_TRUE(shown);
    find<QCheckBox>(shown, prefs::noWarnBigPlaylists)->setChecked(one.ticks);
    one.escapes ? QTest::keyClick(shown, Qt::Key_Escape) : shown->choose(one.presses);
    settle();
    EXPECT_EQ(answer, one.answer);
    EXPECT_EQ(prefs::isTrue(prefs::noWarnBigPlaylists), one.stored);
  }
}

TEST_F(MergeWindow, TheBarNeverGoesBackAndTheSheetLeavesTheWorkInSight) {
  showDuplicates(60);
  markAll();
  view.scrollToTop(ProblemTab::Duplicates, 0);
  view.setProgressIndeterminate(false);
  view.setProgressMaximum(100);
  view.beginProgressSheet();
  auto *bar = find<QProgressBar>(progressSheet(), QStringLiteral("progressBar"));
  view.setProgressValue(40);
  const int before = bar->value();
  view.setProgressValue(30);
  EXPECT_EQ(bar->value(), before);
  const QRect firstRow = table().visualRect(table().model()->index(0, 0));
  EXPECT_GT(progressSheet()->y(), table().viewport()->mapToGlobal(firstRow.bottomLeft()).y());
  const Array &rows = state().lists.mDuplicateSongDicts;
  for (int i = 0; i < 3; ++i) rows.at(0).toDictionary().remove(keys::markInfo), rows.removeAt(0);
  view.reloadTable(ProblemTab::Duplicates);
  EXPECT_EQ(table().verticalScrollBar()->value(), 0);
}

TEST_F(MergeWindow, CancelingIsSeenAlthoughTheMainThreadIsHeldUpNext) {
  showDuplicates(3);
  view.beginProgressSheet();
  settle();
  auto *bar = find<QWidget>(progressSheet(), QStringLiteral("progressBar"));
  auto *line = find<QWidget>(progressSheet(), QStringLiteral("progressSubText"));
  auto *cancel = find<QWidget>(progressSheet(), QStringLiteral("progressCancel"));
  EXPECT_GT(paintsDuring(line, [this] { view.setProgressSubText(QStringLiteral("Canceling…")); }), 0);
  EXPECT_GT(paintsDuring(bar, [this] { view.setProgressIndeterminate(false); }), 0);
  EXPECT_GT(paintsDuring(cancel, [this] { view.setCancelEnabled(false); }), 0);
}

TEST_F(MergeWindow, TheTableIsTheUsersAgainWhenALoadOrAScanHasEnded) {
  showDuplicates(60);
  application.doAutomark();
  for (const bool isLoad : {true, false}) {
    view.scrollToTop(ProblemTab::Duplicates, 0);
    isLoad ? view.libraryDidLoad(1) : view.scanDidEnd();
    table().verticalScrollBar()->setValue(100);
    view.restoreSelection();
    EXPECT_EQ(table().verticalScrollBar()->value(), 100);
  }
}

TEST_F(MergeWindow, AMergeThatDidSomethingIsToldInALineThatOpens) {
  showDuplicates(3);
  auto *note = find<QWidget>(view.problemWindow(), QStringLiteral("mergeNote"));
  state().merge.report.clear();
  view.mergeDidEnd();
  EXPECT_FALSE(note->isVisible());
  MergedGroup group;
  group.title = QStringLiteral("An Artist \"A Song\"");
  group.unkept.push_back({});
  state().merge.report.addGroup(group);
  state().merge.report.addFailure({QStringLiteral("Simon & Garfunkel"), {}, QStringLiteral("a reason")});
  view.mergeDidEnd();
  EXPECT_TRUE(note->isVisible());
  find<QPushButton>(note, QStringLiteral("MergeSummary-Details"))->click();
  ASSERT_TRUE(sheet());
  auto *tree = find<QTreeWidget>(sheet(), QStringLiteral("mergeSummaryTree"));
  EXPECT_EQ(tree->topLevelItemCount(), 2);
  const QTreeWidgetItem *problem = tree->topLevelItem(0)->child(0);
  EXPECT_EQ(tree->topLevelItem(0)->child(1)->text(0), QStringLiteral("a reason"));
  QTextDocument shown;
  Qt::mightBeRichText(problem->toolTip(0)) ? shown.setHtml(problem->toolTip(0))
                                           : shown.setPlainText(problem->toolTip(0));
  EXPECT_EQ(shown.toPlainText(), QStringLiteral("Simon & Garfunkel")) << "letter for letter";
  sheet()->choose(0);
  settle();
  find<QPushButton>(note, QStringLiteral("MergeSummary-Dismiss"))->click();
  EXPECT_FALSE(note->isVisible());
}

TEST_F(MergeWindow, ThePolicyShowsItsFolder) {
  showDuplicates(3);
  auto *choose = find<QPushButton>(view.problemWindow(), QStringLiteral("chooseUnkeptFolder"));
  EXPECT_FALSE(choose->isVisible());
  prefs::set(prefs::unkeptPath, folder(QStringLiteral("gone")));
  prefs::set(prefs::unkeptActionPolicy, 1);
  view.validateProblemUI();
  EXPECT_TRUE(choose->isVisible());
  auto *shown = find<QLabel>(view.problemWindow(), prefs::unkeptPath);
  EXPECT_TRUE(shown->text().endsWith(QStringLiteral("(not found)"))) << shown->text().toStdString();
}
