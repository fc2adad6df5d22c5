#pragma once

#include <QString>
#include <optional>

#include "ctl/Terminal.h"
#include "values/Value.h"

/// Names the library for all that follows as `OpenedLibrary::open` does, and tells the user if its file lacks
/// its end, so that part of it may be lost. False with a message if there is none.
[[nodiscard]] bool chooseLibraryToScan(const QString &given, Terminal &terminal);

/// A library that was read.
struct OpenedLibrary {
  /// The file; by direct access the library's folder.
  QString path;
  bool isDirect = false;
  std::optional<Date> date;
  /// Holds "Tracks", nothing dropped yet.
  Dictionary root;

  /// Chooses the library and reads it: the file `given`, or, if that is empty, the music application's own
  /// where it can be read directly, else the file that the search finds. Nothing, with a message, if there is
  /// none, if it holds no library, or while the music application is still taking it in.
  static std::optional<OpenedLibrary> open(const QString &given, Terminal &terminal);
};
