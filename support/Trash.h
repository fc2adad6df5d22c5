#pragma once

#include <QString>

/// True if the path lies in a trash: it contains "/.Trash", or one of the platform's trash folders holds it
/// or is it. Texts are compared exactly; the disk is not asked. Any thread.
bool pathIsInTrash(const QString &path);

/// Puts what is at a path into the trash, a link itself and not what it leads to. True at once if nothing is
/// there. False, with a line in the log, if it could not be moved; then it still stands. Any thread.
[[nodiscard]] bool doPutInTrash(const QString &path);
