#pragma once

#include "desktop/ProblemTable.h"

class SpellingsDelegate;

/// The table of names: a double click on a spelling takes it, and the spelling pointed at is underlined.
class NameTable : public ProblemTable {
 public:
  NameTable(AppState &appState, ProblemTables &problemTables);

  /// Takes the spelling behind the preferred one in the current row.
  void preferNextSpelling();

 protected:
  void mouseDoubleClickEvent(QMouseEvent *event) override;
  void mouseMoveEvent(QMouseEvent *event) override;
  void leaveEvent(QEvent *event) override;

 private:
  /// The index of the song whose spelling is drawn at a point of the viewport; -1 for none.
  qint32 songAt(const QPoint &place) const;
  void pointAt(const QModelIndex &index, qint32 song);

  const int column;
  SpellingsDelegate *delegate;
  QPersistentModelIndex pointed;
  qint32 pointedSong = -1;
};
