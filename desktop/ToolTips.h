#pragma once

#include <QString>

namespace toolTips {

/// A text as a tool tip that shows it letter for letter, with its line breaks; empty for an empty one. Tool
/// tips are read as HTML where they look like it, and names of songs may.
QString fromPlainText(const QString &text);

}  // namespace toolTips
