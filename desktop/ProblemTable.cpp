#include "desktop/ProblemTable.h"

#include <QHeaderView>
#include <QPainter>
#include <QScrollBar>

#include "desktop/Colours.h"
#include "desktop/RowDelegate.h"
#include "support/Preferences.h"

namespace {

constexpr int kSaveDelayMilliseconds = 400;

int pathColumn(ProblemTab tab) {
  const std::vector<ProblemColumn> &columns = columnsOfTab(tab);
  const auto found = std::find_if(columns.begin(), columns.end(),
                                  [](const ProblemColumn &c) { return c.format == ColumnFormat::Path; });
  return found == columns.end() ? -1 : int(found - columns.begin());
}

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

ProblemTable::ProblemTable(AppState &appState, ProblemTab tab)
    : problemTab(tab),
      rowModel(appState, tab),
      columnsKey(QStringLiteral("columns-") + identifierOfTab(tab)) {
  setObjectName(QStringLiteral("table-") + identifierOfTab(problemTab));
  setModel(&rowModel);
  setItemDelegate(new RowDelegate(pathColumn(problemTab), this));
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
  const QByteArray saved = prefs::value(columnsKey).toData();
  arrangedByUser = !saved.isEmpty() && header()->restoreState(saved);
}

void ProblemTable::saveColumns() {
  prefs::set(columnsKey, header()->saveState());
}

void ProblemTable::sectionChanged(int section) {
  // The last column is resized by every change of the window's width.
  if (fitting || header()->visualIndex(section) == header()->count() - 1) return;
  arrangedByUser = true;
  saveTimer.start();
}

void ProblemTable::fitColumns() {
  const std::vector<ProblemColumn> &columns = columnsOfTab(problemTab);
  int fixed = 0, shared = 0;
  for (const ProblemColumn &column : columns) (column.isRightAligned() ? fixed : shared) += column.width;
  const double scale = qMax(0.5, double(viewport()->width() - fixed) / qMax(1, shared));
  fitting = true;
  for (size_t i = 0; i < columns.size(); ++i) {
    header()->resizeSection(int(i),
                            columns[i].isRightAligned() ? columns[i].width : int(columns[i].width * scale));
  }
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

void ProblemTable::noteSelection() {
  selectedRows.clear();
  std::vector<int> indexes;
  for (const QItemSelectionRange &range : selectionModel()->selection()) {
    for (int i = range.top(); i <= range.bottom(); ++i) indexes.push_back(i);
  }
  std::sort(indexes.begin(), indexes.end());
  selectedRows = rowModel.rowsAt(indexes);
  currentRow = currentIndex().isValid() ? rowModel.row(currentIndex().row()) : Dictionary();
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
