#include "desktop/Icons.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QtMath>

namespace icons {
namespace {

// All drawings stand on a square of 24 units.

void drawNote(QPainter &painter, double x, double y) {
  painter.drawLine(QPointF(x + 3.2, y + 6), QPointF(x + 3.2, y));
  painter.drawLine(QPointF(x + 3.2, y), QPointF(x + 6, y + 1.6));
  const QBrush kept = painter.brush();
  painter.setBrush(painter.pen().color());
  painter.drawEllipse(QPointF(x + 1.8, y + 6.2), 1.4, 1.1);
  painter.setBrush(kept);
}

void drawDuplicates(QPainter &painter) {
  painter.drawPolyline(QPolygonF({{5.5, 16.5}, {3, 16.5}, {3, 3}, {15, 3}, {15, 5.5}}));
  painter.drawRoundedRect(QRectF(8, 8, 13, 13), 1.5, 1.5);
  drawNote(painter, 11.6, 10.8);
}

void drawNames(QPainter &painter) {
  painter.drawPolyline(QPolygonF({{3, 17}, {7, 6}, {11, 17}}));
  painter.drawLine(QPointF(4.5, 13.2), QPointF(9.5, 13.2));
  painter.drawEllipse(QRectF(13.5, 10.5, 6, 6.5));
  painter.drawLine(QPointF(19.5, 10.2), QPointF(19.5, 17));
  painter.drawPolyline(QPolygonF({{3, 21}, {6, 19.8}, {9, 21}, {12, 19.8}, {15, 21}, {18, 19.8}, {21, 21}}));
}

void drawOrphans(QPainter &painter) {
  painter.drawPolygon(QPolygonF({{3, 20}, {3, 5}, {9, 5}, {11, 7.5}, {21, 7.5}, {21, 20}}));
  drawNote(painter, 8.4, 10.6);
}

void drawMissing(QPainter &painter) {
  QPen dashed = painter.pen();
  const QPen kept = dashed;
  dashed.setDashPattern({1.6, 1.5});
  dashed.setCapStyle(Qt::FlatCap);
  painter.setPen(dashed);
  painter.drawRoundedRect(QRectF(4, 3, 16, 18), 2, 2);
  painter.setPen(kept);
  QPainterPath path(QPointF(9.2, 9.6));
  path.cubicTo(9.2, 6.2, 14.8, 6.2, 14.8, 9.6);
  path.cubicTo(14.8, 11.8, 12, 11.8, 12, 14);
  painter.drawPath(path);
  painter.setBrush(kept.color());
  painter.drawEllipse(QPointF(12, 17), 0.5, 0.5);
}

void drawScan(QPainter &painter) {
  painter.drawEllipse(QPointF(10.2, 10.2), 6.7, 6.7);
  painter.drawLine(QPointF(15.2, 15.2), QPointF(21, 21));
  drawNote(painter, 7.4, 6.8);
}

void drawPreferences(QPainter &painter) {
  const double heights[] = {6, 12, 18};
  const double knobs[] = {15.5, 8, 13};
  for (int i = 0; i < 3; ++i) {
    painter.drawLine(QPointF(3, heights[i]), QPointF(knobs[i] - 2.2, heights[i]));
    painter.drawLine(QPointF(knobs[i] + 2.2, heights[i]), QPointF(21, heights[i]));
    painter.drawEllipse(QPointF(knobs[i], heights[i]), 2.2, 2.2);
  }
}

void drawDone(QPainter &painter) {
  painter.drawEllipse(QPointF(12, 12), 9, 9);
  painter.drawPolyline(QPolygonF({{7.6, 12.4}, {10.8, 15.6}, {16.6, 9}}));
}

void drawWarning(QPainter &painter) {
  painter.setBrush(QColor(240, 180, 20));
  painter.drawPolygon(QPolygonF({{12, 3}, {22, 20.5}, {2, 20.5}}));
  painter.setPen(QPen(QColor(40, 30, 0), 2, Qt::SolidLine, Qt::RoundCap));
  painter.drawLine(QPointF(12, 9.5), QPointF(12, 14));
  painter.drawPoint(QPointF(12, 17.3));
}

void draw(QPainter &painter, Shape shape) {
  switch (shape) {
    case Shape::Duplicates:
      return drawDuplicates(painter);
    case Shape::Names:
      return drawNames(painter);
    case Shape::Orphans:
      return drawOrphans(painter);
    case Shape::Missing:
      return drawMissing(painter);
    case Shape::Scan:
      return drawScan(painter);
    case Shape::Preferences:
      return drawPreferences(painter);
    case Shape::Note:
      painter.scale(2.2, 2.2);
      return drawNote(painter, 2.0, 1.8);
    case Shape::Done:
      return drawDone(painter);
    case Shape::Warning:
      return drawWarning(painter);
  }
}

/// Paints at the size asked for, so that lines are crisp whatever the scale, in the colour of the moment.
class ShapeEngine : public QIconEngine {
 public:
  explicit ShapeEngine(Shape drawn) : shape(drawn) {}

  void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override {
    const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
    const auto role = mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::WindowText;
    const double side = qMin(rect.width(), rect.height());
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate(rect.x() + (rect.width() - side) / 2, rect.y() + (rect.height() - side) / 2);
    painter->scale(side / 24, side / 24);
    const double width = side > 40 ? 1.1 : 1.6;
    painter->setPen(
        QPen(qApp->palette().color(group, role), width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter->setBrush(Qt::NoBrush);
    draw(*painter, shape);
    painter->restore();
  }

  QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap image(size);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    paint(&painter, QRect(QPoint(), size), mode, state);
    return image;
  }

  QIconEngine *clone() const override { return new ShapeEngine(shape); }

 private:
  Shape shape;
};

/// A note over tally strokes on a green ground.
QPixmap applicationPixmap(int side) {
  QPixmap image(side, side);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.scale(side / 64.0, side / 64.0);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(38, 110, 92));
  painter.drawRoundedRect(QRectF(3, 3, 58, 58), 13, 13);
  painter.setPen(QPen(QColor(245, 240, 225), 4.4, Qt::SolidLine, Qt::RoundCap));
  for (const double x : {17.0, 26.0, 35.0}) painter.drawLine(QPointF(x, 16), QPointF(x, 48));
  painter.setPen(QPen(QColor(242, 184, 75), 4.4, Qt::SolidLine, Qt::RoundCap));
  painter.drawLine(QPointF(47, 15), QPointF(47, 42));
  painter.drawLine(QPointF(11, 41), QPointF(47, 22));
  painter.setBrush(QColor(242, 184, 75));
  painter.drawEllipse(QPointF(43, 45), 5, 4);
  return image;
}

}  // namespace

QIcon icon(Shape shape) {
  return QIcon(new ShapeEngine(shape));
}

QIcon application() {
  QIcon icon;
  for (const int side : {16, 24, 32, 48, 64, 128, 256}) icon.addPixmap(applicationPixmap(side));
  return icon;
}

}  // namespace icons
