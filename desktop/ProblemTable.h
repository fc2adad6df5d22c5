#pragma once

#include <QTimer>
#include <QTreeView>

#include "desktop/ProblemTableModel.h"

class QMenu;

/// The table of one tab: two-tone stripes, selection and place kept by row identity, columns as the user left
/// them (preference "columns-<identifier>", see ColumnLayout).
class ProblemTable : public QTreeView {
 public:
  ProblemTable(AppState &appState, ProblemTables &problemTables, ProblemTab tab);
  ~ProblemTable() override;

  ProblemTableModel &rows() { return rowModel; }
  /// Reads the list anew; selected rows that are still in it stay selected, and the rows in sight stay there.
  void reload();
  /// Shows rows from `first` to before `end` anew, which are the same rows as before.
  void reloadRows(int first, int end) { rowModel.reloadRows(first, end); }

  /// The selected rows by reference, top first.
  const std::vector<Dictionary> &selection() const { return selectedRows; }
  /// Where they are now, ascending; without a selection the current row, if there is one.
  std::vector<qsizetype> selectedOrCurrent() const;
  /// Selects those of the rows that are still in the list, and no others.
  void select(const std::vector<Dictionary> &wanted);
  /// The selected rows as lines of texts separated by tabs, columns in the order shown.
  QString selectedText() const;

  /// Scrolls so that a row is the topmost one, as far as there are rows.
  void scrollToTop(int row);

  std::function<void()> onSelectionChanged;
  /// Fills the menu for a row that was clicked with the right button, or that the menu key was pressed for.
  std::function<void(QMenu &menu, int row)> onContextMenu;

 protected:
  void drawRow(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
  void selectionChanged(const QItemSelection &selected, const QItemSelection &deselected) override;
  void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
  void scrollContentsBy(int dx, int dy) override;
  void resizeEvent(QResizeEvent *event) override;
  void contextMenuEvent(QContextMenuEvent *event) override;

  ProblemTables &tables;

 private:
  void restoreColumns();
  void saveColumns();
  void sectionChanged(int section);
  /// Gives the columns the whole width, as long as the user has not arranged them.
  void fitColumns();
  void noteTopRow();
  void noteSelection();
  int rowHeightInPixels() const;
  int indexOf(const Dictionary &row) const;
  std::vector<int> selectedRowIndexes() const;
  QItemSelection rangesInOrder() const;

  const ProblemTab problemTab;
  ProblemTableModel rowModel;
  const QString columnsKey;
  QTimer saveTimer;
  /// Held by reference, so that the rows are known again when the list has changed.
  std::vector<Dictionary> selectedRows;
  Dictionary currentRow;
  Dictionary topRow;
  bool reloading = false;
  bool fitting = false;
  bool arrangedByUser = false;
};
