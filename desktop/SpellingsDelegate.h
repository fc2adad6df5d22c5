#pragma once

#include "desktop/RowDelegate.h"
#include "desktop/SpellingLine.h"

/// Draws a row's spellings, the preferred one bold in brackets, and underlines the one pointed at.
class SpellingsDelegate : public RowDelegate {
 public:
  explicit SpellingsDelegate(QObject *parent) : RowDelegate(-1, parent) {}

  /// The spelling to underline: a row and the index of its song; -1 for none.
  void setPointedAt(int row, qint32 songIndex) {
    pointedRow = row;
    pointedSong = songIndex;
  }

  /// The line of a cell as it is drawn in a rectangle, and where in it.
  static SpellingLine lineIn(const QRect &cell, const QFont &font, const StyledText &text);
  static QRect textArea(const QRect &cell);

  void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;

 private:
  int pointedRow = -1;
  qint32 pointedSong = -1;
};
