#pragma once

#include <QString>
#include <optional>

#include "values/Value.h"

/// What an audio file tells the library of itself.
namespace trackFile {

/// The keys that a file's content gives a track, in the order in which libraries have them: names and numbers
/// of its tag, "Kind", "Size", "Total Time", "Bit Rate", "Sample Rate", "Date Modified", "Artwork Count". A
/// null dictionary for a file of a kind that the library does not take, or that cannot be read. Reads the
/// file; any thread.
Dictionary record(const QString &path);
/// "Size" and "Date Modified" alone; nothing if there is no file.
std::optional<Dictionary> stamp(const QString &path);
/// True if a file still is as the library last saw it, by size and date. Dates of whole seconds, as an
/// imported library has them, are compared in whole seconds.
bool isUnchanged(const QString &path, const Value &size, const Value &dateModified);

}  // namespace trackFile
