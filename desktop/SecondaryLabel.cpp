#include "desktop/SecondaryLabel.h"

#include <QPainter>

#include "desktop/Colours.h"

SecondaryLabel::SecondaryLabel(const QString &text) : QLabel(text) {
  setTextFormat(Qt::PlainText);
  setWordWrap(true);
}

void SecondaryLabel::paintEvent(QPaintEvent *) {
  QPainter painter(this);
  painter.setPen(colours::secondaryText(palette()));
  painter.drawText(contentsRect(), int(alignment()) | Qt::TextWordWrap, text());
}
