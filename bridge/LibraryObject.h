#pragma once

#include <QString>

#include "platform/LibraryFramework.h"

/// The door of direct access: the platform's library framework, and what it says of the library's places. The
/// framework is a snapshot: once this program has changed something, the next question waits until the
/// library's own file has been written, 60 seconds at most, and has the framework read it again. So any
/// operation here may take its time; whoever asks while another thread waits gets the old state at once. Any
/// thread. Where there is no framework, or it has no library, nothing is accessible.
namespace iTunesLibInterface {

/// The framework with its library open; null if there is none. Waits as told above.
LibraryFramework *libraryObject();
/// True if the library can be read.
bool canAccessLibrary();
/// Reads anew, at once.
void reloadLibrary();
/// Notes that the program has changed the library just now.
void dirtyLibrary();

/// The address of the media folder; null on newer systems, and where the library does not say.
QString mediaFolderURL();
/// Its path; null if there is none.
QString musicLibraryMediaPath();
/// The folder that holds most of the files of the tracks, worked out once; null for a library of 50 files or
/// fewer.
QString musicLibraryMostCommonParentMediaPath();
/// The folder with the library's own file; null if none was modified these last days.
QString musicLibraryFolder();

/// The media folder's address, whatever the system; the library's folder's where only that is known; null if
/// neither is.
QString mediaAddressOf(LibraryFramework &object);

/// Forgets all, for a fresh start: the next question opens the library anew.
void reset();

}  // namespace iTunesLibInterface
