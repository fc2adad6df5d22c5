#include "desktop/FrameText.h"

#include <QGuiApplication>
#include <QRegularExpression>
#include <QScreen>

namespace frameText {
namespace {

/// The whole numbers of a text that consists of nothing but numbers and the braces given around them.
std::optional<std::vector<int>> numbersOf(const QString &text, const QString &pattern) {
  static const QString number = QStringLiteral("\\s*(-?\\d{1,7}(?:\\.\\d+)?)\\s*");
  QString expression = pattern;
  expression.replace(u'#', number);
  const auto match =
      QRegularExpression(QRegularExpression::anchoredPattern(expression)).match(text.trimmed());
  if (!match.hasMatch()) return std::nullopt;
  std::vector<int> numbers;
  for (int i = 1; i <= match.lastCapturedIndex(); ++i) numbers.push_back(int(match.captured(i).toDouble()));
  for (const int value : numbers) {
    if (qAbs(value) > 1'000'000) return std::nullopt;
  }
  return numbers;
}

}  // namespace

QString fromPoint(const QPoint &point) {
  return QStringLiteral("{%1, %2}").arg(point.x()).arg(point.y());
}

QString fromRectangle(const QRect &r) {
  return QStringLiteral("{{%1, %2}, {%3, %4}}").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height());
}

std::optional<QPoint> toPoint(const QString &text) {
  const auto numbers = numbersOf(text, QStringLiteral("\\{#,#\\}"));
  if (!numbers) return std::nullopt;
  return QPoint(numbers->at(0), numbers->at(1));
}

std::optional<QRect> toRectangle(const QString &text) {
  const auto numbers = numbersOf(text, QStringLiteral("\\{\\s*\\{#,#\\}\\s*,\\s*\\{#,#\\}\\s*\\}"));
  if (!numbers) return std::nullopt;
  const QRect rectangle(numbers->at(0), numbers->at(1), numbers->at(2), numbers->at(3));
  if (rectangle.isEmpty()) return std::nullopt;
  return rectangle;
}

QRect broughtBack(const QRect &frame, const QRect &screen) {
  QRect result(frame.topLeft(), frame.size().boundedTo(screen.size()));
  result.moveRight(qMin(result.right(), screen.right()));
  result.moveBottom(qMin(result.bottom(), screen.bottom()));
  result.moveLeft(qMax(result.left(), screen.left()));
  result.moveTop(qMax(result.top(), screen.top()));
  return result;
}

QRect screenFor(const QRect &frame) {
  const QScreen *screen = QGuiApplication::screenAt(frame.center());
  if (!screen) screen = QGuiApplication::primaryScreen();
  return screen ? screen->availableGeometry() : QRect(0, 0, 1024, 768);
}

}  // namespace frameText
