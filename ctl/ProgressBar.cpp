#include "ctl/ProgressBar.h"

namespace {

constexpr int kCells = 30;
/// Leaves room on a line of 80.
constexpr int kTextColumns = 42;

}  // namespace

void ProgressBar::setText(const QString &newText) {
  text = newText;
  draw();
}

void ProgressBar::setSubText(const QString &newText) {
  subText = newText;
  draw();
}

void ProgressBar::setIndeterminate(bool newIndeterminate) {
  indeterminate = newIndeterminate;
  if (!text.isEmpty()) draw();
}

void ProgressBar::setMaximum(double newMaximum) {
  maximum = newMaximum;
}

void ProgressBar::setValue(double newValue) {
  value = newValue;
  draw();
}

void ProgressBar::draw() {
  if (!terminal.errIsTerminal) return;
  const double part = indeterminate || maximum <= 0.0 ? 0.0 : qBound(0.0, value / maximum, 1.0);
  const int full = int(part * kCells);
  QString line = u'[' + QString(full, u'#') + QString(kCells - full, u'.') + QStringLiteral("] ");
  if (!indeterminate) line += QStringLiteral("%1% ").arg(int(part * 100.0), 3);
  line += printable(subText.isEmpty() ? text : subText).left(kTextColumns);
  if (line == drawn) return;
  drawn = line;
  terminal.err << '\r' << line.toStdString() << "\033[K" << std::flush;
}

void ProgressBar::clear() {
  if (drawn.isEmpty()) return;
  drawn.clear();
  terminal.err << "\r\033[K" << std::flush;
}
