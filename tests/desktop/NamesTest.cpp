#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>

#include "desktop/SpellingLine.h"
#include "tests/desktop/DesktopFixture.h"
#include "values/Keys.h"

namespace {

class Names : public DesktopFixture {
 protected:
  void showNames() {
    const Array &list = state().lists.mInconsistentNameDicts;
    const QString artist = keys::RKIsArtistMatched.text();
    list.append(
        makeNameRow(artist, u"The Who"_qs, {u"the who"_qs, u"The Who"_qs, u"The Who"_qs, u"Who & Co"_qs}));
    list.append(makeNameRow(keys::RKIsAlbumMatched.text(), u"A"_qs, {u"a"_qs, u"A"_qs}));
    state().mHaveScannedLibraryForProblems = true;
    view.problemWindow()->resize(900, 560);
    view.showProblemWindow();
    view.selectTab(ProblemTab::Names);
    view.reloadTable(ProblemTab::Names);
    view.validateProblemUI();
    QCoreApplication::processEvents();
  }
  QString shown(int row) { return names().rows().index(row, 1).data().toString(); }
  /// A point of the row's line on the `occurrence` of a text, by the fonts in which it is drawn.
  QPoint placeOf(int row, const QString &text) {
    const QString line = shown(row);
    const qsizetype at = line.indexOf(text);
    const QString before = line.left(at);
    QFont bold = names().font();
    bold.setBold(true);
    const QFontMetricsF plain(names().font()), heavy(bold);
    double x = 0;
    const qsizetype open = before.indexOf(u'['), close = before.indexOf(u']');
    if (open < 0) {
      x = plain.horizontalAdvance(before);
    } else {
      x = plain.horizontalAdvance(before.left(open)) +
          heavy.horizontalAdvance(before.mid(open, close + 1 - open)) +
          plain.horizontalAdvance(before.mid(close + 1));
    }
    const QRect cell = names().visualRect(names().rows().index(row, 1));
    return QPoint(cell.left() + 3 + int(x) + 4, cell.center().y());
  }
  void pointAt(const QPoint &place) {
    QMouseEvent move(QEvent::MouseMove, place, names().viewport()->mapToGlobal(place), Qt::NoButton, {}, {});
    QApplication::sendEvent(names().viewport(), &move);
  }
  void doubleClick(const QPoint &place) {
    QTest::mouseClick(names().viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(names().viewport(), Qt::LeftButton, {}, place);
  }
};

}  // namespace

TEST_F(Names, ADoubleClickTakesTheSpellingUnderIt) {
  showNames();
  EXPECT_EQ(shown(0), u"Who & Co, [The Who], the who"_qs);
  EXPECT_EQ(names().rows().index(1, 0).data().toString(), u"Album"_qs);
  doubleClick(placeOf(0, u"the who"_qs));
  EXPECT_EQ(shown(0), u"Who & Co, The Who, [the who]"_qs);
  doubleClick(placeOf(0, u"Who & Co"_qs));
  EXPECT_EQ(shown(0), u"[Who & Co], The Who, the who"_qs);
  doubleClick(placeOf(0, u"the who"_qs));
  EXPECT_EQ(shown(0), u"Who & Co, The Who, [the who]"_qs);
  const QRect cell = names().visualRect(names().rows().index(0, 1));
  doubleClick(QPoint(cell.right() - 20, cell.center().y()));
  doubleClick(QPoint(20, cell.center().y()));
  EXPECT_EQ(shown(0), u"Who & Co, The Who, [the who]"_qs) << "beside the spellings nothing is taken";
  EXPECT_EQ(names().selection().size(), 1u);
}

TEST_F(Names, MenuAndKeyTakeASpellingAndKeepTheSelection) {
  showNames();
  names().setCurrentIndex(names().rows().index(0, 0));
  names().setFocus();
  QTest::keyClick(&names(), Qt::Key_Space);
  EXPECT_EQ(shown(0), u"Who & Co, The Who, [the who]"_qs);
  QTest::keyClick(&names(), Qt::Key_Space);
  EXPECT_EQ(shown(0), u"[Who & Co], The Who, the who"_qs);
  auto *menu = find<QMenu>(view.problemWindow()->menuBar(), u"PreferredSpelling"_qs);
  Q_EMIT menu->aboutToShow();
  ASSERT_EQ(menu->actions().size(), 3);
  EXPECT_EQ(menu->actions()[0]->text(), u"Who && Co  –  1 song"_qs);
  EXPECT_TRUE(menu->actions()[0]->isChecked());
  EXPECT_EQ(menu->actions()[1]->text(), u"The Who  –  2 songs"_qs);
  menu->actions()[1]->trigger();
  EXPECT_EQ(shown(0), u"Who & Co, [The Who], the who"_qs);
  EXPECT_EQ(names().currentIndex().row(), 0);
  EXPECT_EQ(view.problemWindow()->page(ProblemTab::Names).summary(),
            u"2 names spelled in more than one way, 1 selected"_qs);
  EXPECT_TRUE(
      names().rows().index(0, 1).data(Qt::ToolTipRole).toString().contains(u"2 songs  (preferred)"_qs));
  view.selectTab(ProblemTab::Duplicates);
  EXPECT_FALSE(menu->menuAction()->isEnabled());
}

TEST_F(Names, PointingAtASpellingShowsThatItCanBeTaken) {
  showNames();
  pointAt(placeOf(0, u"the who"_qs));
  EXPECT_EQ(names().viewport()->cursor().shape(), Qt::PointingHandCursor);
  picture(view.problemWindow(), u"names-pointed-at"_qs);
  pointAt(placeOf(0, u"[The"_qs));
  EXPECT_EQ(names().viewport()->cursor().shape(), Qt::ArrowCursor) << "it is preferred already";
}

TEST_F(Names, ALineThatIsCutAnswersForWhatIsDrawn) {
  const StyledText line{{u"Artist: "_qs, false, {}},
                        {u"[One]"_qs, true, 0},
                        {u", "_qs, false, {}},
                        {QString(300, u'x'), false, 1},
                        {u"never"_qs, false, 2}};
  const SpellingLine drawn(line, names().font(), 200);
  EXPECT_TRUE(drawn.isCut());
  EXPECT_FALSE(drawn.unitAt(-1));
  EXPECT_EQ(drawn.unitAt(0), 0);
  EXPECT_FALSE(drawn.unitAt(201));
  qsizetype last = -1;
  for (double x = 0; x < 200; x += 0.5) {
    const qsizetype unit = drawn.unitAt(x).value_or(last);
    EXPECT_GE(unit, last);
    last = unit;
  }
  EXPECT_EQ(runAt(line, last)->sourceIndex, 1);
  EXPECT_FALSE(SpellingLine({}, names().font(), 10).unitAt(1));
}
