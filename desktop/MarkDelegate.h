#pragma once

#include "desktop/RowDelegate.h"

/// Draws a mark as a check box in the middle of its cell. Clicks are the table's.
class MarkDelegate : public RowDelegate {
 public:
  explicit MarkDelegate(QObject *parent) : RowDelegate(-1, parent) {}

  void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
};
