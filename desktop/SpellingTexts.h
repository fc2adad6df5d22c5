#pragma once

#include "ui/SpellingChoices.h"

/// A spelling with the number of its songs, in one line for menus and tool tips. What cannot be seen in it is
/// made visible.
QString spellingLine(const SpellingChoice &choice);
