#pragma once

#include <QPoint>
#include <QRect>
#include <QString>
#include <optional>

/// Places of windows as the preferences keep them: points "{x, y}", rectangles "{{x, y}, {w, h}}".
namespace frameText {

QString fromPoint(const QPoint &point);
QString fromRectangle(const QRect &rectangle);
/// Nothing for a text of another shape, or numbers beyond a million.
std::optional<QPoint> toPoint(const QString &text);
/// Nothing for an empty rectangle too.
std::optional<QRect> toRectangle(const QString &text);

/// The frame moved, and where it must be made smaller, so that it lies whole on `screen`.
QRect broughtBack(const QRect &frame, const QRect &screen);
/// The available area of the screen that holds the frame's middle; of the first screen if none does.
QRect screenFor(const QRect &frame);

}  // namespace frameText
