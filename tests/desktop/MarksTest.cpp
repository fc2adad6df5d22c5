#include <QHeaderView>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>

#include "desktop/ColumnLayout.h"
#include "desktop/ProblemTable.h"
#include "support/Preferences.h"
#include "tests/desktop/DesktopFixture.h"
#include "values/Keys.h"

namespace {

class Marks : public DesktopFixture {
 protected:
  void clickMark(int row, Key mark) {
    QTest::mouseClick(table().viewport(), Qt::LeftButton, {}, middleOf(table(), row, mark));
  }
  void selectRows(int first, int last) {
    table().setCurrentIndex(table().rows().index(first, 0));
    QItemSelection rows(table().rows().index(first, 0), table().rows().index(last, 0));
    table().selectionModel()->select(rows, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  }
  /// The rows with marks, as "0b 3i".
  std::string marks() {
    QStringList marked;
    for (int i = 0; i < table().rows().rowCount(); ++i) {
      const Dictionary row = table().rows().row(i);
      const bool info = row.value(keys::markInfo).toBool(), audio = row.value(keys::markAudio).toBool();
      if (info || audio) marked.append(QString::number(i) + (info && audio ? u'b' : info ? u'i' : u'a'));
    }
    return marked.join(u' ').toStdString();
  }
  QPushButton *button(const char *name) {
    return find<QPushButton>(view.problemWindow(), QStringLiteral("button-") + QLatin1String(name));
  }
};

}  // namespace

TEST_F(Marks, AClickSetsThemAndLeavesTheSelectionAlone) {
  showDuplicates(30);
  selectRows(4, 7);
  clickMark(1, keys::markInfo);
  EXPECT_EQ(marks(), "1b");
  clickMark(2, keys::markAudio);
  EXPECT_EQ(marks(), "1i 2a");
  clickMark(2, keys::markAudio);
  EXPECT_EQ(marks(), "1i");
  const QPoint place = middleOf(table(), 3, keys::markInfo);
  QTest::mouseClick(table().viewport(), Qt::LeftButton, {}, place);
  QTest::mouseDClick(table().viewport(), Qt::LeftButton, {}, place);
  QTest::mouseRelease(table().viewport(), Qt::LeftButton, {}, place);
  EXPECT_EQ(marks(), "1i 3a") << "the second click of a double click takes back what the first has set";
  EXPECT_EQ(table().selection().size(), 4u);
  const QModelIndex marked = table().rows().index(1, 0);
  EXPECT_EQ(marked.data(Qt::AccessibleTextRole).toString(), u"The track information of this copy is kept"_qs);
  EXPECT_NE(marked.data(Qt::ToolTipRole), table().rows().index(2, 0).data(Qt::ToolTipRole));
}

TEST_F(Marks, KeysActOnTheSelectedRows) {
  showDuplicates(30);
  selectRows(2, 2);
  table().setFocus();
  QTest::keyClick(&table(), Qt::Key_Space);
  EXPECT_EQ(marks(), "2b");
  QTest::keyClick(&table(), Qt::Key_Up);
  QTest::keyClick(&table(), Qt::Key_A);
  EXPECT_EQ(marks(), "1a 2i");
  selectRows(4, 9);
  QTest::keyClick(&table(), Qt::Key_I);
  EXPECT_EQ(marks(), "1a 2i 4b 6b 9b") << "the first selected row of each group";
  QTest::keyClick(&table(), Qt::Key_I);
  EXPECT_EQ(marks(), "1a 2i 4a 6a 9a");
}

TEST_F(Marks, CommandsMarkTheGroupsOfTheSelectionOrAll) {
  showDuplicates(30);
  EXPECT_FALSE(button("NotDuplicates")->isEnabled());
  selectRows(0, 1);
  EXPECT_EQ(button("Automark")->text(), u"Automark Selected Groups"_qs);
  QTest::mouseClick(button("Automark"), Qt::LeftButton);
  const std::string oneGroup = marks();
  EXPECT_FALSE(oneGroup.empty());
  EXPECT_EQ(oneGroup.find('3'), std::string::npos);
  table().clearSelection();
  QTest::keyClick(view.problemWindow(), Qt::Key_M, Qt::ControlModifier);
  EXPECT_GT(marks().size(), oneGroup.size());
  QTest::mouseClick(button("Unmark"), Qt::LeftButton);
  EXPECT_EQ(marks(), "");
}

TEST_F(Marks, NotDuplicatesAsksAndTakesTheRowsAway) {
  showDuplicates(6);
  selectRows(0, 0);
  QTest::mouseClick(button("NotDuplicates"), Qt::LeftButton);
  ASSERT_TRUE(sheet());
  EXPECT_EQ(sheet()->objectName(), u"BadSelNotDuplicatesTitle"_qs);
  EXPECT_FALSE(button("Automark")->isEnabled()) << "a sheet is up";
  picture(sheet(), u"sheet-bad-selection"_qs);
  sheet()->choose(0);
  EXPECT_TRUE(button("Automark")->isEnabled());
  for (int i = 0; i < 6; ++i) {
    table().rows().row(i).set(keys::PersistentID, QStringLiteral("%1").arg(i, 16, 16, QChar(u'0')));
  }
  selectRows(0, 2);
  QTest::keyClick(view.problemWindow(), Qt::Key_D, Qt::ControlModifier);
  ASSERT_TRUE(sheet());
  EXPECT_EQ(sheet()->objectName(), u"RememberNotDuplicatesTitle"_qs);
  picture(sheet(), u"sheet-not-duplicates"_qs);
  sheet()->choose(0);
  EXPECT_EQ(table().rows().rowCount(), 3);
  EXPECT_EQ(view.problemWindow()->page(ProblemTab::Duplicates).summary(),
            u"1 group of duplicates, 3 songs"_qs);
}

TEST_F(Marks, TheContextMenuOffersAutomarkOnlyForOneOfSeveralSelectedRows) {
  showDuplicates(9);
  const auto automarkOffered = [this](int row) {
    QMenu menu;
    table().onContextMenu(menu, row);
    const QList<QAction *> actions = menu.actions();
    return std::any_of(actions.begin(), actions.end(),
                       [](QAction *action) { return action->objectName() == u"Automark"; });
  };
  selectRows(0, 0);
  EXPECT_FALSE(automarkOffered(0));
  selectRows(0, 3);
  EXPECT_TRUE(automarkOffered(3));
  EXPECT_FALSE(automarkOffered(5));
}

TEST_F(Marks, SavedColumnsFitThoughOthersHaveBeenAdded) {
  const std::vector<ProblemColumn> &columns = columnsOfTab(ProblemTab::Duplicates);
  QHeaderView &header = *table().header();
  EXPECT_FALSE(columnLayout::restore(header, columns, QByteArray("\0\0\0\xff", 4))) << "an older form";
  EXPECT_FALSE(columnLayout::restore(header, columns, Value()));
  const Array layout = Array::make();
  for (const auto &[key, width] : {std::pair(u"Path"_qs, 333), std::pair(u"Gone"_qs, 50),
                                   std::pair(u"Name"_qs, 111), std::pair(u"Path"_qs, 1)}) {
    const Dictionary column = Dictionary::make();
    column.set(keys::columnKey, key);
    column.set(keys::columnWidth, width);
    layout.append(column);
  }
  EXPECT_TRUE(columnLayout::restore(header, columns, layout));
  const auto logical = [&](Key key) {
    const auto found =
        std::find_if(columns.begin(), columns.end(), [&](const auto &c) { return c.key == key; });
    return int(found - columns.begin());
  };
  EXPECT_EQ(header.visualIndex(logical(keys::markInfo)), 0);
  EXPECT_LT(header.visualIndex(logical(keys::Path)), header.visualIndex(logical(keys::Name)));
  EXPECT_EQ(header.sectionSize(logical(keys::Name)), 111);
  const Value saved = columnLayout::save(header, columns);
  EXPECT_TRUE(columnLayout::restore(header, columns, saved));
  EXPECT_TRUE(isEqual(columnLayout::save(header, columns), saved));
}
