#pragma once

#include <QPersistentModelIndex>

#include "desktop/ProblemTable.h"

/// The table of duplicates: a click in the cell of a mark sets or clears it and leaves the selection alone.
class DuplicateTable : public ProblemTable {
 public:
  DuplicateTable(AppState &appState, ProblemTables &problemTables);

  /// Sets or clears marks of the selected rows, or of the current one.
  void toggleMarks(const std::vector<Key> &marks);

 protected:
  void mousePressEvent(QMouseEvent *event) override;
  void mouseMoveEvent(QMouseEvent *event) override;
  void mouseReleaseEvent(QMouseEvent *event) override;
  void mouseDoubleClickEvent(QMouseEvent *event) override;
  /// Letters mark rows here, so typing searches for none.
  void keyboardSearch(const QString &) override {}

 private:
  bool takesPress(const QMouseEvent &event);

  /// The mark on which the button went down and has not come up yet.
  QPersistentModelIndex pressedMark;
};
