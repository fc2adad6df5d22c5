#include "desktop/SpellingLine.h"

#include <QFontMetricsF>
#include <QPainter>

namespace {

QFont boldened(QFont font) {
  font.setBold(true);
  return font;
}

}  // namespace

SpellingLine::SpellingLine(const StyledText &line, const QFont &font, double width)
    : plain(font), bold(boldened(font)) {
  const QFontMetricsF plainMetrics(plain), boldMetrics(bold);
  double x = 0;
  qsizetype unit = 0;
  for (const StyledRun &run : line) {
    const QFontMetricsF &metrics = run.bold ? boldMetrics : plainMetrics;
    // A line break inside a name would end the line.
    QString text = run.text;
    std::replace_if(
        text.begin(), text.end(), [](QChar c) { return c == u'\n' || c == u'\r'; }, QChar(u' '));
    double advance = metrics.horizontalAdvance(text);
    if (x + advance > width) {
      text = metrics.elidedText(text, Qt::ElideRight, width - x);
      advance = metrics.horizontalAdvance(text);
      cut = true;
    }
    pieces.push_back({text, run.bold, run.sourceIndex, unit, x, advance});
    if (cut) break;
    x += advance;
    unit += run.text.size();
  }
}

void SpellingLine::paint(QPainter &painter, const QRectF &area,
                         std::optional<qint32> underlinedSource) const {
  const QFontMetricsF metrics(plain);
  const double baseline = area.top() + (area.height() - metrics.height()) / 2 + metrics.ascent();
  for (const Piece &piece : pieces) {
    QFont font = piece.bold ? bold : plain;
    font.setUnderline(!piece.bold && piece.source && piece.source == underlinedSource);
    painter.setFont(font);
    painter.drawText(QPointF(area.left() + piece.x, baseline), piece.text);
  }
}

std::optional<qsizetype> SpellingLine::unitAt(double x) const {
  if (x < 0) return {};
  for (const Piece &piece : pieces) {
    if (x >= piece.x + piece.width) continue;
    const QFontMetricsF metrics(piece.bold ? bold : plain);
    qsizetype unit = 0;
    while (unit + 1 < piece.text.size() &&
           metrics.horizontalAdvance(piece.text.left(unit + 1)) <= x - piece.x) {
      ++unit;
    }
    return piece.firstUnit + unit;
  }
  return {};
}
