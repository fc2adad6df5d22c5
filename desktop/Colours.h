#pragma once

#include <QColor>
#include <QPalette>

/// The colours that the style has no name for, all mixed from a palette, so that light and dark both fit.
namespace colours {

/// `amount` of `top` over `bottom`, 0 to 1.
QColor blend(const QColor &bottom, const QColor &top, double amount);
/// The background of every second group of a table.
QColor stripe(const QPalette &palette);
/// Text of less weight: quotes, empty states, explanations.
QColor secondaryText(const QPalette &palette);
/// The background and the frame of a note.
QColor note(const QPalette &palette);
QColor noteFrame(const QPalette &palette);
/// A thin line between areas.
QColor separator(const QPalette &palette);

/// The palette for a label of less weight.
QPalette withSecondaryText(const QPalette &palette);

}  // namespace colours
