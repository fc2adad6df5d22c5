#pragma once

#include <QString>

#include "keeper/library/LibraryStore.h"

/// Where the library's own files lie, and what they are called there.
namespace mediaFolder {

/// The folder that the library names, else "iTunes Media" beside the store; without a slash at its end. It
/// need not exist.
QString path(LibraryStore &store);
/// The place of a track below a folder: "Artist/Album/03 Name.mp3", with the disc's number ahead where there
/// are several ("2-03 Name.mp3"). The artist is that of the album if it has one, "Compilations" for an album
/// of many. `extension` has no point.
QString placeOf(const Dictionary &record, const QString &extension);
/// A name that every file system takes: signs that some refuse become "_", and it is not too long. Empty if
/// nothing is left.
QString cleaned(const QString &name);

/// Copies a file into the media folder, to its place or, where that is taken, to one with a number behind the
/// name. The new path; empty with an `error`.
QString copyInto(LibraryStore &store, const QString &file, const Dictionary &record, QString *error);
/// Moves the file of a track to its place in the media folder and takes the new location into the library:
/// first the new name, then the library, then the old name goes, so that the track has a file at any instant.
/// A file outside the media folder stays, and so does one that is in its place. Empty, or what went wrong;
/// the file is where it was then.
QString organise(LibraryStore &store, TrackRow track);

}  // namespace mediaFolder
