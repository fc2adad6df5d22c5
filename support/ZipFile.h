#pragma once

#include <QString>

/// Makes an archive that holds one file under its own name. It is made under a temporary name and takes the
/// place of a file at `zipPath` only when it is whole; on failure that one stays and `error` says why. Any
/// thread.
[[nodiscard]] bool writeZipOfFile(const QString &zipPath, const QString &sourcePath, QString *error);
