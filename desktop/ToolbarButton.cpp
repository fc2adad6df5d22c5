#include "desktop/ToolbarButton.h"

#include <QPainter>

#include "desktop/Colours.h"

namespace {
constexpr int kIconSide = 24;
constexpr int kMargin = 6;
constexpr int kLeastWidth = 76;
}  // namespace

ToolbarButton::ToolbarButton(icons::Shape shape, const QString &name) {
  setObjectName(name);
  setIcon(icons::icon(shape));
  setFocusPolicy(Qt::TabFocus);
  setAttribute(Qt::WA_Hover);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void ToolbarButton::setLabel(const QString &label) {
  if (label == text()) return;
  setText(label);
  setAccessibleName(label);
  updateGeometry();
}

QSize ToolbarButton::sizeHint() const {
  const int width = fontMetrics().horizontalAdvance(text()) + 4 * kMargin;
  return {qMax(kLeastWidth, width), kIconSide + fontMetrics().height() + 2 * kMargin + 4};
}

void ToolbarButton::paintEvent(QPaintEvent *) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QColor window = palette().color(QPalette::Window);
  const QRectF ground = QRectF(rect()).adjusted(1, 1, -1, -1);
  painter.setPen(Qt::NoPen);
  if (isChecked()) {
    painter.setBrush(colours::blend(window, palette().color(QPalette::Highlight), 0.3));
    painter.drawRoundedRect(ground, 6, 6);
  }
  if (isEnabled() && (isDown() || underMouse())) {
    QColor shade = palette().color(QPalette::WindowText);
    shade.setAlphaF(isDown() ? 0.16f : 0.07f);
    painter.setBrush(shade);
    painter.drawRoundedRect(ground, 6, 6);
  }
  if (hasFocus()) {
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.drawRoundedRect(ground.adjusted(1, 1, -1, -1), 5, 5);
  }
  const QRect iconRect((width() - kIconSide) / 2, kMargin, kIconSide, kIconSide);
  icon().paint(&painter, iconRect, Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
  painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::WindowText));
  const QRect textRect = rect().adjusted(0, kMargin + kIconSide + 2, 0, -2);
  painter.drawText(textRect, Qt::AlignHCenter | Qt::AlignTop, text());
}
