#pragma once

#include <QStyledItemDelegate>

/// Draws a table's cells: paths shortened in the middle, no frame around single cells. The tool tip is the
/// model's, or the whole text where it does not fit.
class RowDelegate : public QStyledItemDelegate {
 public:
  RowDelegate(int pathColumn, QObject *parent) : QStyledItemDelegate(parent), elidedInTheMiddle(pathColumn) {}

  QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
  bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                 const QModelIndex &index) override;

 protected:
  void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;

 private:
  const int elidedInTheMiddle;
};
