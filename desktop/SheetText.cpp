#include "desktop/SheetText.h"

#include <QScrollBar>

SheetText::SheetText(int textWidth) : width(textWidth) {
  setReadOnly(true);
  setTextInteractionFlags(Qt::TextSelectableByMouse);
  setFocusPolicy(Qt::ClickFocus);
  setFrameShape(QFrame::NoFrame);
  viewport()->setAutoFillBackground(false);
  document()->setDocumentMargin(0);
  setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

void SheetText::setWholeText(const QString &text) {
  setPlainText(text);
  setFixedSize(width, wholeHeight());
}

int SheetText::wholeHeight() const {
  document()->setTextWidth(width);
  return qCeil(document()->size().height());
}

void SheetText::setShownHeight(int height) {
  if (height >= wholeHeight()) return;
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  setFixedSize(width + verticalScrollBar()->sizeHint().width(), height);
}
