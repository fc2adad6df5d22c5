#include "desktop/MarkDelegate.h"

#include <QApplication>
#include <QPainter>
#include <cmath>

#include "desktop/Colours.h"

namespace {

constexpr double kSide = 13;

/// The styles' own boxes have outlines that are lost on dark grounds and on stripes.
void drawBox(QPainter &painter, const QStyleOptionViewItem &option) {
  const bool selected = option.state & QStyle::State_Selected;
  const bool on = option.checkState == Qt::Checked;
  const auto group = option.state & QStyle::State_Active ? QPalette::Active : QPalette::Inactive;
  const QColor ground = option.palette.color(group, selected ? QPalette::Highlight : QPalette::Base);
  const QColor text = option.palette.color(group, selected ? QPalette::HighlightedText : QPalette::Text);
  const QColor accent = selected ? text : option.palette.color(group, QPalette::Highlight);
  const QColor tick = selected ? ground : option.palette.color(group, QPalette::HighlightedText);
  const QPointF middle = QRectF(option.rect).center();
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(std::floor(middle.x() - kSide / 2) + 0.5, std::floor(middle.y() - kSide / 2) + 0.5);
  painter.setPen(on ? accent : colours::blend(ground, text, 0.5));
  painter.setBrush(on ? accent : ground);
  painter.drawRoundedRect(QRectF(0, 0, kSide, kSide), 3, 3);
  if (on) {
    painter.setPen(QPen(tick, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(QPolygonF({{3.2, 6.8}, {5.6, 9.2}, {9.9, 3.9}}));
  }
  painter.restore();
}

}  // namespace

void MarkDelegate::paint(QPainter *painter, const QStyleOptionViewItem &given,
                         const QModelIndex &index) const {
  QStyleOptionViewItem option = given;
  initStyleOption(&option, index);
  const QStyle *style = option.widget ? option.widget->style() : QApplication::style();
  option.features &= ~QStyleOptionViewItem::HasCheckIndicator;
  style->drawControl(QStyle::CE_ItemViewItem, &option, painter, option.widget);

  drawBox(*painter, option);
}
