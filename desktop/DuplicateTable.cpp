#include "desktop/DuplicateTable.h"

#include <QMouseEvent>

#include "desktop/MarkDelegate.h"

DuplicateTable::DuplicateTable(AppState &appState, ProblemTables &problemTables)
    : ProblemTable(appState, problemTables, ProblemTab::Duplicates) {
  auto *delegate = new MarkDelegate(this);
  const std::vector<ProblemColumn> &columns = columnsOfTab(ProblemTab::Duplicates);
  for (size_t i = 0; i < columns.size(); ++i) {
    if (columns[i].isMark()) setItemDelegateForColumn(int(i), delegate);
  }
}

void DuplicateTable::toggleMarks(const std::vector<Key> &marks) {
  const std::vector<qsizetype> chosen = selectedOrCurrent();
  if (!chosen.empty()) tables.toggleMarks(chosen, marks);
}

bool DuplicateTable::takesPress(const QMouseEvent &event) {
  const QModelIndex index = indexAt(event.pos());
  const bool isPlainClick = event.button() == Qt::LeftButton && event.modifiers() == Qt::NoModifier;
  if (!isPlainClick || !(index.flags() & Qt::ItemIsUserCheckable)) return false;
  pressedMark = index;
  selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
  return true;
}

void DuplicateTable::mousePressEvent(QMouseEvent *event) {
  if (!takesPress(*event)) ProblemTable::mousePressEvent(event);
}

void DuplicateTable::mouseDoubleClickEvent(QMouseEvent *event) {
  if (!takesPress(*event)) ProblemTable::mouseDoubleClickEvent(event);
}

void DuplicateTable::mouseMoveEvent(QMouseEvent *event) {
  if (!pressedMark.isValid()) ProblemTable::mouseMoveEvent(event);
}

void DuplicateTable::mouseReleaseEvent(QMouseEvent *event) {
  const QModelIndex pressed = pressedMark;
  pressedMark = QModelIndex();
  if (!pressed.isValid()) return ProblemTable::mouseReleaseEvent(event);
  if (indexAt(event->pos()) != pressed) return;
  const bool on = pressed.data(Qt::CheckStateRole).toInt() == Qt::Checked;
  model()->setData(pressed, on ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
}
