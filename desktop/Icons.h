#pragma once

#include <QIcon>

/// The window's own icons, drawn in the colours of the palette in force at each painting, at any size.
namespace icons {

enum class Shape { Duplicates, Names, Orphans, Missing, Scan, Preferences, Note, Done, Warning };

QIcon icon(Shape shape);
/// The program's icon.
QIcon application();

}  // namespace icons
