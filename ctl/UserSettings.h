#pragma once

#include "ctl/Terminal.h"

/// The settings in force as a whole. Main thread.
namespace userSettings {

/// Removes every setting and stores the first values.
void resetAll(Terminal &terminal);

/// Stores the first values where there are none. A store without them is reset whole by the next launch,
/// which would lose what is set before.
void ensureFirstValues(Terminal &terminal);

/// Makes the settings survive. False with a message if they cannot be saved.
[[nodiscard]] bool save(Terminal &terminal);

}  // namespace userSettings
