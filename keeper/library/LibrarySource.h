#pragma once

#include <QString>

#include "values/Value.h"

/// A library as a file has it.
struct LibrarySource {
  Dictionary root;
  /// One line that says why there is none; empty if there is.
  QString error;
  /// What is wrong with a file of which a part could be read; empty as a rule.
  QString damage;
};

/// Reads a library XML. The system's parser goes first, as it keeps all types; where it refuses the file, or
/// shows fewer tracks than the file's text names, our own reader is asked as well, and the one that keeps
/// more counts. Does not throw. The memory is that of the whole library.
LibrarySource readLibrarySource(const QString &path);

/// The library file to import where there is no store yet: the most recently modified one among the usual
/// folders, whatever its age; empty if there is none.
QString newestLibraryFile();
