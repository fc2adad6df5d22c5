#pragma once

#include "ctl/Terminal.h"

/// Music Keeper's settings, each of them yes or no. Main thread.
namespace keeperSettings {

/// Shows all of them, or one; the exit code.
int show(const QString &key, Terminal &terminal);
/// Changes one; the exit code.
int change(const QString &key, const QString &text, Terminal &terminal);

}  // namespace keeperSettings
