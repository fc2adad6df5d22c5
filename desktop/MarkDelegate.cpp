#include "desktop/MarkDelegate.h"

#include <QApplication>
#include <QPainter>

void MarkDelegate::paint(QPainter *painter, const QStyleOptionViewItem &given,
                         const QModelIndex &index) const {
  QStyleOptionViewItem option = given;
  initStyleOption(&option, index);
  const QStyle *style = option.widget ? option.widget->style() : QApplication::style();
  option.features &= ~QStyleOptionViewItem::HasCheckIndicator;
  style->drawControl(QStyle::CE_ItemViewItem, &option, painter, option.widget);

  QStyleOptionButton box;
  box.palette = option.palette;
  box.state = option.state & (QStyle::State_Enabled | QStyle::State_MouseOver | QStyle::State_Active);
  box.state |= option.checkState == Qt::Checked ? QStyle::State_On : QStyle::State_Off;
  const QSize size(style->pixelMetric(QStyle::PM_IndicatorWidth, &box, option.widget),
                   style->pixelMetric(QStyle::PM_IndicatorHeight, &box, option.widget));
  box.rect = QStyle::alignedRect(option.direction, Qt::AlignCenter, size, option.rect);
  style->drawPrimitive(QStyle::PE_IndicatorCheckBox, &box, painter, option.widget);
}
