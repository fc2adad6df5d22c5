#include "desktop/ElidedLabel.h"

#include <QPainter>

ElidedLabel::ElidedLabel() {
  setTextFormat(Qt::PlainText);
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

void ElidedLabel::setFullText(const QString &text) {
  setText(text);
  setToolTip(text.toHtmlEscaped());
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
