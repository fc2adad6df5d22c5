#include "desktop/SecondaryLabel.h"

#include <QApplication>
#include <QEvent>

#include "desktop/Colours.h"

SecondaryLabel::SecondaryLabel(const QString &text) : QLabel(text) {
  setWordWrap(true);
  updateColours();
}

void SecondaryLabel::updateColours() {
  // The change of its own palette comes back as an event.
  if (updating) return;
  updating = true;
  setPalette(colours::withSecondaryText(QApplication::palette(this)));
  updating = false;
}

void SecondaryLabel::changeEvent(QEvent *event) {
  QLabel::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) updateColours();
}
