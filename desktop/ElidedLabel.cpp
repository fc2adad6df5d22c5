#include "desktop/ElidedLabel.h"

#include <QPainter>

#include "desktop/ToolTips.h"

ElidedLabel::ElidedLabel() {
  setTextFormat(Qt::PlainText);
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

void ElidedLabel::setFullText(const QString &text) {
  setText(text);
  setToolTip(toolTips::fromPlainText(text));
}

QSize ElidedLabel::minimumSizeHint() const {
  return {40, fontMetrics().height()};
}

void ElidedLabel::paintEvent(QPaintEvent *) {
  QPainter painter(this);
  painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::WindowText));
  painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter,
                   fontMetrics().elidedText(text(), Qt::ElideMiddle, width()));
}
