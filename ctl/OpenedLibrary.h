#pragma once

#include <QString>
#include <optional>

#include "ctl/Terminal.h"
#include "values/Value.h"

/// Names the library file for all that follows: `given`, or, if that is empty, the one that the search finds.
/// False with a message if there is no such file.
[[nodiscard]] bool chooseLibraryFile(const QString &given, Terminal &terminal);

/// A library file that was read.
struct OpenedLibrary {
  QString path;
  std::optional<Date> date;
  /// Holds "Tracks", nothing dropped yet.
  Dictionary root;

  /// Chooses a file as `chooseLibraryFile` does and reads it. Nothing, with a message, if there is none or it
  /// holds no library.
  static std::optional<OpenedLibrary> open(const QString &given, Terminal &terminal);
};

/// Tells the user if the library file lacks its end, so that part of it may be lost.
void warnIfCutOff(const QString &path, Terminal &terminal);
