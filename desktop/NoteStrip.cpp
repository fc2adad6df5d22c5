#include "desktop/NoteStrip.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>

#include "desktop/Colours.h"

NoteStrip::NoteStrip(const QString &text) : label(new QLabel(text)) {
  label->setWordWrap(true);
  auto *row = new QHBoxLayout(this);
  row->setContentsMargins(12, 8, 12, 8);
  row->addWidget(label, 1);
}

void NoteStrip::setText(const QString &text) {
  label->setText(text);
}

QPushButton *NoteStrip::addButton(const QString &text, std::function<void()> pressed) {
  auto *button = new QPushButton(text);
  button->setAutoDefault(false);
  connect(button, &QPushButton::clicked, this, std::move(pressed));
  layout()->addWidget(button);
  return button;
}

void NoteStrip::paintEvent(QPaintEvent *) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(colours::noteFrame(palette()));
  painter.setBrush(colours::note(palette()));
  painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 5, 5);
}
