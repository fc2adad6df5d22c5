#include "desktop/SheetText.h"

#include <QScrollBar>
#include <memory>

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
  // In a document of its own: the one that is shown is laid out for the size of the moment.
  const std::unique_ptr<QTextDocument> measured(document()->clone());
  measured->setDefaultFont(font());
  measured->setTextWidth(width);
  whole = qCeil(measured->size().height());
  setFixedSize(width, whole);
}

void SheetText::setShownHeight(int height) {
  if (height >= whole) return;
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  constexpr int kGap = 8;
  setViewportMargins(0, 0, kGap, 0);
  setFixedSize(width + kGap + verticalScrollBar()->sizeHint().width(), height);
}
