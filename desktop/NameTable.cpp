#include "desktop/NameTable.h"

#include <QMouseEvent>

#include "desktop/SpellingsDelegate.h"

NameTable::NameTable(AppState &appState, ProblemTables &problemTables)
    : ProblemTable(appState, problemTables, ProblemTab::Names),
      column(columnWithFormat(ProblemTab::Names, ColumnFormat::Spellings)),
      delegate(new SpellingsDelegate(this)) {
  setItemDelegateForColumn(column, delegate);
  setMouseTracking(true);
}

void NameTable::preferNextSpelling() {
  if (!currentIndex().isValid()) return;
  const int row = currentIndex().row();
  const auto next = choiceAfterPreferred(tables.spellingsOfRow(row));
  if (next) tables.choosePreferredSong(row, next->songIndex);
}

void NameTable::mouseDoubleClickEvent(QMouseEvent *event) {
  const QModelIndex index = indexAt(event->pos());
  if (event->button() == Qt::LeftButton && index.isValid() && index.column() == column) {
    const QRect cell = visualRect(index);
    const double x = event->position().x() - SpellingsDelegate::textArea(cell).left();
    tables.tableDidMouseDownWithEvent(index.row(), float(x), [&](const StyledText &line, float place) {
      return SpellingsDelegate::lineIn(cell, font(), line).unitAt(place);
    });
  }
  ProblemTable::mouseDoubleClickEvent(event);
}

qint32 NameTable::songAt(const QPoint &place) const {
  const QModelIndex index = indexAt(place);
  if (!index.isValid() || index.column() != column) return -1;
  const StyledText line =
      styledTextOfValue(static_cast<const ProblemTableModel *>(model())->value(index.row(), column));
  const QRect cell = visualRect(index);
  const auto unit = SpellingsDelegate::lineIn(cell, font(), line)
                        .unitAt(place.x() - SpellingsDelegate::textArea(cell).left());
  const StyledRun *run = unit ? runAt(line, *unit) : nullptr;
  return run && !run->bold ? run->sourceIndex.value_or(-1) : -1;
}

void NameTable::pointAt(const QModelIndex &index, qint32 song) {
  if (pointed == index && pointedSong == song) return;
  if (pointed.isValid()) update(pointed);
  pointed = song < 0 ? QPersistentModelIndex() : QPersistentModelIndex(index);
  pointedSong = song;
  delegate->setPointedAt(pointed.isValid() ? pointed.row() : -1, song);
  if (pointed.isValid()) update(pointed);
  viewport()->setCursor(song < 0 ? Qt::ArrowCursor : Qt::PointingHandCursor);
}

void NameTable::mouseMoveEvent(QMouseEvent *event) {
  ProblemTable::mouseMoveEvent(event);
  if (event->buttons() == Qt::NoButton) pointAt(indexAt(event->pos()), songAt(event->pos()));
}

void NameTable::leaveEvent(QEvent *event) {
  ProblemTable::leaveEvent(event);
  pointAt({}, -1);
}
