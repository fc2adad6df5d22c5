#pragma once

#include <QString>

#include "values/Value.h"

/// Creates the folders of a path that are missing, the last part too. True if all stand at the end, and for a
/// path of a single part; false when a file is in the way or creating failed.
bool createMissingDirectories(const QString &path);

/// The metadata service's attributes of a file; a reference to no dictionary where there are none.
Dictionary pathMetadata(const QString &path);

/// The text's UTF-16 units as decimal numbers with spaces between: what a text really holds, for the log.
QString bytesDescription(const QString &text);

namespace BMUtility {

/// A path "tmp<number><suffix>" in the home folder at which a file could be created; the file is removed
/// again. A null text after 1000 tries.
QString uniqueWritablePathWithSuffix(const QString &suffix);

}  // namespace BMUtility
