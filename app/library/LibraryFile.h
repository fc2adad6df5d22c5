#pragma once

#include <QString>

#include "bridge/iTunesInterface.h"
#include "values/Value.h"

/// The library as one dictionary, whatever its source.
namespace iTunesInterface {

/// The library by direct access, else from its file. Null with a text in `error` (may be empty for a file
/// that could not be read). One load at a time.
Dictionary getMusicLibraryDictionaryWithError(QString *error);

/// The library file at a path. A file with the same date as the one read last gives the same dictionary
/// again, with all that was done to it since. While a parser runs, the settings name the other one, so that a
/// crash makes the next launch take that.
Dictionary getMusicLibraryDictionaryAtPathWithError(const QString &path, QString *error);

/// The folder of the library file read last; empty before.
QString musicLibraryPath();
/// The "Library Persistent ID" of the library read last; empty before.
QString musicLibraryPersistentID();

/// Where the music application keeps the picture of a track, or of a database, by its hexadecimal ID: a
/// `local` one or one that was fetched. Null for an ID of fewer than 10 characters, and before a library was
/// read. The file need not exist.
QString pathToExternalArtForIDLocal(const QString &id, bool local);

/// What is wrong with a library file; empty if the system's parser accepts it.
QString validateXMLAtPath(const QString &path);

/// Forgets the library read last, for a fresh start.
void resetLibraryCache();

}  // namespace iTunesInterface
