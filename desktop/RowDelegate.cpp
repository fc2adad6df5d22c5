#include "desktop/RowDelegate.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHelpEvent>
#include <QToolTip>

#include "desktop/ToolTips.h"

namespace {
constexpr QChar kEnSpace(0x2002);
}

QSize RowDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const {
  QSize size = QStyledItemDelegate::sizeHint(option, index);
  size.setHeight(option.fontMetrics.height() + 8);
  return size;
}

void RowDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const {
  QStyledItemDelegate::initStyleOption(option, index);
  option->state &= ~QStyle::State_HasFocus;
  // Keeps a number away from the text of the next column.
  if (option->displayAlignment & Qt::AlignRight && !option->text.isEmpty()) option->text += kEnSpace;
  option->textElideMode = index.column() == elidedInTheMiddle ? Qt::ElideMiddle : Qt::ElideRight;
}

bool RowDelegate::helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                            const QModelIndex &index) {
  if (event->type() != QEvent::ToolTip) return QStyledItemDelegate::helpEvent(event, view, option, index);
  QString text = index.data(Qt::ToolTipRole).toString();
  if (text.isEmpty()) {
    text = index.data(Qt::DisplayRole).toString();
    const int margin =
        2 * (QApplication::style()->pixelMetric(QStyle::PM_FocusFrameHMargin, &option, view) + 1);
    const bool cut = view->fontMetrics().horizontalAdvance(text) + margin > option.rect.width();
    if (!cut) text.clear();
  }
  QToolTip::showText(event->globalPos(), toolTips::fromPlainText(text), view, option.rect);
  return true;
}
