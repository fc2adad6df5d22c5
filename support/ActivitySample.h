#pragma once

#include <QtGlobal>

namespace BMUtility {

/// Logs what a process does, looked at several times over the given seconds: its state and, for each of its
/// tasks, name, state and where in the kernel it waits. 0, or an errno if there is no such process (ESRCH) or
/// no way to look. Waits that long. Any thread.
int logActivityForProcessSeconds(qint64 processID, float seconds);

}  // namespace BMUtility
