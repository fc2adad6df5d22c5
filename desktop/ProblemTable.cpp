#include "desktop/ProblemTable.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QMenu>
#include <QPainter>
#include <QScrollBar>

#include "bridge/LocalizedMessage.h"
#include "desktop/Colours.h"
#include "desktop/ColumnLayout.h"
#include "desktop/RowDelegate.h"
#include "support/Preferences.h"

namespace {

constexpr int kSaveDelayMilliseconds = 400;

/// The rows of a sorted list of indexes as few ranges.
QItemSelection rangesOf(const std::vector<int> &indexes, const QAbstractItemModel &model) {
  QItemSelection selection;
  for (size_t i = 0; i < indexes.size();) {
    size_t end = i + 1;
    while (end < indexes.size() && indexes[end] == indexes[end - 1] + 1) ++end;
    selection.append(QItemSelectionRange(model.index(indexes[i], 0),
                                         model.index(indexes[end - 1], model.columnCount() - 1)));
    i = end;
  }
  return selection;
}

}  // namespace

ProblemTable::ProblemTable(AppState &appState, ProblemTables &problemTables, ProblemTab tab)
    : tables(problemTables),
      problemTab(tab),
      rowModel(appState, problemTables, tab),
      columnsKey(QStringLiteral("columns-") + identifierOfTab(tab)) {
  setObjectName(QStringLiteral("table-") + identifierOfTab(problemTab));
  setAccessibleName(localizedMessage(QStringLiteral("TabTitle-") + identifierOfTab(problemTab)));
  setModel(&rowModel);
  setItemDelegate(new RowDelegate(columnWithFormat(problemTab, ColumnFormat::Path), this));
  setRootIsDecorated(false);
  setItemsExpandable(false);
  setUniformRowHeights(true);
  setAllColumnsShowFocus(true);
  setSelectionMode(ExtendedSelection);
  setEditTriggers(NoEditTriggers);
  setVerticalScrollMode(ScrollPerPixel);
  setHorizontalScrollMode(ScrollPerPixel);
  setFrameShape(NoFrame);
  header()->setSectionsMovable(true);
  header()->setFirstSectionMovable(true);
  header()->setMinimumSectionSize(40);
  header()->setStretchLastSection(true);
  restoreColumns();
  saveTimer.setSingleShot(true);
  saveTimer.setInterval(kSaveDelayMilliseconds);
  connect(&saveTimer, &QTimer::timeout, this, [this] { saveColumns(); });
  connect(header(), &QHeaderView::sectionResized, this, [this](int section) { sectionChanged(section); });
  connect(header(), &QHeaderView::sectionMoved, this, [this](int section) { sectionChanged(section); });
}

ProblemTable::~ProblemTable() {
  if (saveTimer.isActive()) saveColumns();
  onSelectionChanged = {};
  reloading = true;
  setModel(nullptr);
}

void ProblemTable::restoreColumns() {
  arrangedByUser = columnLayout::restore(*header(), columnsOfTab(problemTab), prefs::value(columnsKey));
}

void ProblemTable::saveColumns() {
  prefs::set(columnsKey, columnLayout::save(*header(), columnsOfTab(problemTab)));
}

void ProblemTable::sectionChanged(int section) {
  // The last column is resized by every change of the window's width.
  if (fitting || header()->visualIndex(section) == header()->count() - 1) return;
  arrangedByUser = true;
  saveTimer.start();
}

void ProblemTable::fitColumns() {
  fitting = true;
  columnLayout::fit(*header(), columnsOfTab(problemTab), viewport()->width());
  fitting = false;
}

void ProblemTable::resizeEvent(QResizeEvent *event) {
  fitting = true;
  QTreeView::resizeEvent(event);
  fitting = false;
  if (!arrangedByUser) fitColumns();
}

void ProblemTable::reload() {
  reloading = true;
  const int place = verticalScrollBar()->value();
  const bool isReset = rowModel.reload();
  if (isReset) {
    executeDelayedItemsLayout();
    updateGeometries();
    select(selectedRows);
    const int top = place > 0 ? indexOf(topRow) : -1;
    if (top >= 0) {
      const int hidden = place % qMax(1, rowHeightInPixels());
      verticalScrollBar()->setValue(top * rowHeightInPixels() + hidden);
    } else {
      verticalScrollBar()->setValue(place);
    }
  }
  reloading = false;
  noteTopRow();
}

void ProblemTable::scrollToTop(int row) {
  executeDelayedItemsLayout();
  updateGeometries();
  verticalScrollBar()->setValue(row * rowHeightInPixels());
}

int ProblemTable::rowHeightInPixels() const {
  return rowModel.rowCount() > 0 ? rowHeight(rowModel.index(0, 0)) : 1;
}

int ProblemTable::indexOf(const Dictionary &row) const {
  if (row.isNull()) return -1;
  const std::vector<int> found = rowModel.indexesOf({row.identity()});
  return found.empty() ? -1 : found.front();
}

void ProblemTable::select(const std::vector<Dictionary> &wanted) {
  QSet<const void *> identities;
  for (const Dictionary &row : wanted) identities.insert(row.identity());
  const std::vector<int> indexes = rowModel.indexesOf(identities);
  int current = indexOf(currentRow);
  if (current < 0 && !indexes.empty()) current = indexes.front();
  if (current >= 0) {
    selectionModel()->setCurrentIndex(rowModel.index(current, 0), QItemSelectionModel::NoUpdate);
  }
  selectionModel()->select(rangesOf(indexes, rowModel), QItemSelectionModel::ClearAndSelect);
  noteSelection();
}

std::vector<int> ProblemTable::selectedRowIndexes() const {
  std::vector<int> indexes;
  for (const QItemSelectionRange &range : rangesInOrder()) {
    for (int i = range.top(); i <= range.bottom(); ++i) indexes.push_back(i);
  }
  return indexes;
}

std::vector<qsizetype> ProblemTable::selectedOrCurrent() const {
  const std::vector<int> indexes = selectedRowIndexes();
  if (indexes.empty() && currentIndex().isValid()) return {currentIndex().row()};
  return {indexes.begin(), indexes.end()};
}

void ProblemTable::noteSelection() {
  selectedRows = rowModel.rowsAt(selectedRowIndexes());
  currentRow = currentIndex().isValid() ? rowModel.row(currentIndex().row()) : Dictionary();
}

void ProblemTable::currentChanged(const QModelIndex &current, const QModelIndex &previous) {
  QTreeView::currentChanged(current, previous);
  if (reloading) return;
  currentRow = current.isValid() ? rowModel.row(current.row()) : Dictionary();
}

void ProblemTable::contextMenuEvent(QContextMenuEvent *event) {
  const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
  const QModelIndex index = byKey ? currentIndex() : indexAt(event->pos());
  if (!index.isValid() || !onContextMenu) return;
  auto *menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  onContextMenu(*menu, index.row());
  const QPoint place = byKey ? visualRect(index).bottomLeft() : event->pos();
  if (menu->isEmpty()) return menu->deleteLater();
  menu->popup(viewport()->mapToGlobal(place));
}

void ProblemTable::selectionChanged(const QItemSelection &selected, const QItemSelection &deselected) {
  QTreeView::selectionChanged(selected, deselected);
  if (reloading) return;
  noteSelection();
  if (onSelectionChanged) onSelectionChanged();
}

QString ProblemTable::selectedText() const {
  std::vector<int> columns;
  for (int visual = 0; visual < header()->count(); ++visual)
    columns.push_back(header()->logicalIndex(visual));
  QStringList lines;
  for (const QItemSelectionRange &range : rangesInOrder()) {
    for (int i = range.top(); i <= range.bottom(); ++i) lines.append(rowModel.rowText(i, columns));
  }
  return lines.join(u'\n');
}

QItemSelection ProblemTable::rangesInOrder() const {
  QItemSelection ranges = selectionModel()->selection();
  std::sort(ranges.begin(), ranges.end(),
            [](const QItemSelectionRange &a, const QItemSelectionRange &b) { return a.top() < b.top(); });
  return ranges;
}

void ProblemTable::scrollContentsBy(int dx, int dy) {
  QTreeView::scrollContentsBy(dx, dy);
  if (!reloading) noteTopRow();
}

void ProblemTable::noteTopRow() {
  const QModelIndex top = indexAt(QPoint(1, 0));
  topRow = top.isValid() ? rowModel.row(top.row()) : Dictionary();
}

void ProblemTable::drawRow(QPainter *painter, const QStyleOptionViewItem &option,
                           const QModelIndex &index) const {
  if (index.data(ProblemTableModel::kStripeRole).toBool()) {
    painter->fillRect(option.rect, colours::stripe(palette()));
  }
  QTreeView::drawRow(painter, option, index);
}
