#pragma once

#include <QTimer>
#include <QTreeView>

#include "desktop/ProblemTableModel.h"

/// The table of one tab: two-tone stripes, selection and place kept by row identity, columns as the user left
/// them (preference "columns-<identifier>").
class ProblemTable : public QTreeView {
 public:
  ProblemTable(AppState &appState, ProblemTab tab);
  ~ProblemTable() override;

  ProblemTableModel &rows() { return rowModel; }
  /// Reads the list anew; selected rows that are still in it stay selected, and the rows in sight stay there.
  void reload();

  /// The selected rows by reference, top first.
  const std::vector<Dictionary> &selection() const { return selectedRows; }
  /// Selects those of the rows that are still in the list, and no others.
  void select(const std::vector<Dictionary> &wanted);
  /// The selected rows as lines of texts separated by tabs, columns in the order shown.
  QString selectedText() const;

  std::function<void()> onSelectionChanged;

 protected:
  void drawRow(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
  void selectionChanged(const QItemSelection &selected, const QItemSelection &deselected) override;
  void scrollContentsBy(int dx, int dy) override;
  void resizeEvent(QResizeEvent *event) override;

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
