#pragma once

#include <QString>
#include <optional>

#include "ctl/Terminal.h"
#include "values/Value.h"

/// Names the library for all that follows: the file `given`, or, if that is empty, the music application's
/// own where it can be read directly, else the file that the search finds. False with a message if there is
/// none.
[[nodiscard]] bool chooseLibraryFile(const QString &given, Terminal &terminal);

/// A library that was read.
struct OpenedLibrary {
  /// The file; by direct access the library's folder.
  QString path;
  bool isDirect = false;
  std::optional<Date> date;
  /// Holds "Tracks", nothing dropped yet.
  Dictionary root;

  /// Chooses a library as `chooseLibraryFile` does and reads it. Nothing, with a message, if there is none or
  /// it holds no library.
  static std::optional<OpenedLibrary> open(const QString &given, Terminal &terminal);
};

/// Tells the user if a library file lacks its end, so that part of it may be lost.
void warnIfCutOff(const QString &path, Terminal &terminal);
