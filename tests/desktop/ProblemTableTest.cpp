#include <QScrollBar>
#include <QSignalSpy>

#include "tests/desktop/DesktopFixture.h"
#include "values/Keys.h"

namespace {

class ProblemTableRows : public DesktopFixture {
 protected:
  void addRows(int count) {
    const Array &list = state().lists.mDuplicateSongDicts;
    for (int i = 0; i < count; ++i, ++added) list.append(makeRow(added, added / 2 + 1));
  }
  void show(int rows) {
    addRows(rows);
    view.problemWindow()->resize(900, 560);
    view.showProblemWindow();
    view.reloadTable(ProblemTab::Duplicates);
    QCoreApplication::processEvents();
  }
  Dictionary row(int index) { return state().lists.mDuplicateSongDicts.at(index).toDictionary(); }
  void select(int index) {
    table().setCurrentIndex(table().rows().index(index, 0));
    ASSERT_EQ(table().selection().size(), 1u);
  }

  int added = 0;
};

}  // namespace

TEST_F(ProblemTableRows, RowsThatAreAppendedDisturbNothing) {
  show(200);
  select(50);
  table().verticalScrollBar()->setValue(700);
  QSignalSpy resets(&table().rows(), &QAbstractItemModel::modelReset);
  addRows(300);
  EXPECT_EQ(table().rows().rowCount(), 200) << "before the reload";
  view.reloadTable(ProblemTab::Duplicates);
  EXPECT_EQ(resets.count(), 0);
  EXPECT_EQ(table().rows().rowCount(), 500);
  EXPECT_EQ(table().currentIndex().row(), 50);
  EXPECT_EQ(table().verticalScrollBar()->value(), 700);
}

TEST_F(ProblemTableRows, SelectionAndPlaceFollowTheRowsWhenOthersGo) {
  show(400);
  select(101);
  const Dictionary chosen = row(101);
  table().scrollTo(table().rows().index(100, 0), QAbstractItemView::PositionAtTop);
  const Dictionary top = row(100);
  view.rememberSelection();
  for (int i = 0; i < 30; ++i) state().lists.mDuplicateSongDicts.removeAt(0);
  view.reloadTable(ProblemTab::Duplicates);
  view.restoreSelection();
  ASSERT_EQ(table().selection().size(), 1u);
  EXPECT_TRUE(table().selection()[0].isSame(chosen));
  EXPECT_EQ(table().currentIndex().row(), 71);
  EXPECT_TRUE(table().rows().row(table().indexAt(QPoint(5, 3)).row()).isSame(top));
}

TEST_F(ProblemTableRows, ARowThatHasLeftIsNotSelectedAgainThoughOneIsEqual) {
  show(10);
  select(4);
  view.rememberSelection();
  state().lists.mDuplicateSongDicts.set(4, row(4).copyMembers(true));
  view.reloadTable(ProblemTab::Duplicates);
  view.restoreSelection();
  EXPECT_TRUE(table().selection().empty());
}

TEST_F(ProblemTableRows, AnswersNothingForRowsThatTheListHasLost) {
  show(10);
  state().lists.mDuplicateSongDicts = Array::make();
  EXPECT_EQ(table().rows().index(9, 0).data().toString(), QString());
  view.problemWindow()->grab();
  view.reloadTable(ProblemTab::Duplicates);
  EXPECT_EQ(table().rows().rowCount(), 0);
}

TEST_F(ProblemTableRows, ShowsValuesAsPeopleReadThem) {
  const struct {
    const char *column;
    Value value;
    QString shown;
  } cases[] = {{"Column-Time", u"1:01"_qs, u"1:01"_qs},
               {"Column-Time", Value(), QString()},
               {"Column-Information", true, u"✓"_qs},
               {"Column-Information", false, QString()},
               {"Column-Rating", u"★★★"_qs, u"★★★"_qs},
               {"Column-Size", 4'821'000, u"4.8 MB"_qs},
               {"Column-Size", std::numeric_limits<qint64>::min(), QString()},
               {"Column-Year", 1987, u"1987"_qs},
               {"Column-Year", 0, QString()},
               {"Column-Name", u"7"_qs, u"7"_qs},
               {"Column-Name", QByteArray("x"), QString()},
               {"Column-Type", u"AAC 256"_qs, u"AAC 256"_qs}};
  for (const auto &one : cases) {
    for (const ProblemColumn &column : columnsOfTab(ProblemTab::Duplicates)) {
      if (column.titleKey != QLatin1String(one.column)) continue;
      EXPECT_EQ(columnText(column, one.value), one.shown) << one.column;
    }
  }
}

TEST_F(ProblemTableRows, AHundredThousandRowsArePaintedFromWhatIsInSight) {
  show(100'000);
  table().selectAll();
  EXPECT_EQ(table().selection().size(), 100'000u);
  QElapsedTimer clock;
  clock.start();
  constexpr int kSteps = 50;
  for (int step = 1; step <= kSteps; ++step) {
    table().verticalScrollBar()->setValue(table().verticalScrollBar()->maximum() / kSteps * step);
    table().grab();
  }
  const qint64 each = clock.elapsed() / kSteps;
  RecordProperty("millisecondsForAStep", int(each));
  EXPECT_LT(each, 200) << "a step must not depend on the number of rows";
}
