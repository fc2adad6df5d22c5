#include "desktop/SpellingsDelegate.h"

#include <QApplication>
#include <QPainter>

#include "desktop/ProblemTableModel.h"

namespace {
constexpr int kMargin = 3;
}  // namespace

QRect SpellingsDelegate::textArea(const QRect &cell) {
  return cell.adjusted(kMargin, 0, -kMargin, 0);
}

SpellingLine SpellingsDelegate::lineIn(const QRect &cell, const QFont &font, const StyledText &text) {
  return SpellingLine(text, font, textArea(cell).width());
}

void SpellingsDelegate::paint(QPainter *painter, const QStyleOptionViewItem &given,
                              const QModelIndex &index) const {
  QStyleOptionViewItem option = given;
  initStyleOption(&option, index);
  option.text.clear();
  const QStyle *style = option.widget ? option.widget->style() : QApplication::style();
  style->drawControl(QStyle::CE_ItemViewItem, &option, painter, option.widget);
  const bool selected = option.state & QStyle::State_Selected;
  const bool active = option.state & QStyle::State_Active;
  const auto group = active ? QPalette::Active : QPalette::Inactive;
  const auto *model = static_cast<const ProblemTableModel *>(index.model());
  const StyledText text = styledTextOfValue(model->value(index.row(), index.column()));
  painter->save();
  painter->setClipRect(option.rect, Qt::IntersectClip);
  painter->setPen(option.palette.color(group, selected ? QPalette::HighlightedText : QPalette::Text));
  lineIn(option.rect, option.font, text)
      .paint(*painter, textArea(option.rect),
             index.row() == pointedRow ? std::optional(pointedSong) : std::nullopt);
  painter->restore();
}
