#pragma once

#include <QString>

namespace BMUtility {

/// True if an application of that identifier runs in the user's session. Any thread; cheap.
bool isApplicationRunningWithIdentifier(const QString &identifier);

/// The same by the application's name.
bool isApplicationRunning(const QString &name);

}  // namespace BMUtility
