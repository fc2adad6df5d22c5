#pragma once

#include "keeper/server/KeeperOptions.h"

/// The program `tallyfen-keeper` behind its command line. Main thread, behind the application object and
/// `setPlatform`.
namespace keeperProgram {

/// What the exit code says.
inline constexpr int kDone = 0;
inline constexpr int kFailed = 1;
inline constexpr int kWrongUse = 2;
inline constexpr int kAnotherServes = 3;

/// Serves until a script or a signal ends it, or does what is asked once; the exit code. Lines for the user
/// go to the standard streams.
int run(const QStringList &arguments);

}  // namespace keeperProgram
