#pragma once

#include <QString>
#include <QStringList>
#include <optional>

#include "bridge/iTunesInterface.h"
#include "values/Value.h"

/// Where the library's file and its media lie. Any thread; nothing here changes the disk.
namespace iTunesInterface {

/// The folder of the library as the music application's settings name it; empty if they do not.
QString currentMusicLibraryPathFromPrefs();

/// The library file to read: the most recently modified one among the usual folders that was modified within
/// the last 30 days; empty if there is none. Its date goes to `date` (30 days ago if there is none).
QString mostRecentMusicLibraryPath(Date *date);
QString currentMusicLibraryXMLPath();

/// Names the library file by hand, whatever its age: it takes the place of the search. Empty ends that.
void setMusicLibraryXMLPath(const QString &path);

/// The modification date of the library file; the present time with direct access; nothing if there is no
/// file.
std::optional<Date> currentMusicLibraryDate();

/// True if a library could be read: by direct access or from a file.
bool canGetMusicLibrary();

/// The media folder as the library names it; empty if it does not. A null dictionary is fetched; an empty
/// path stands for the library last read, or else for the one to read.
QString mediaFolderPathFromDictionaryLibraryPath(const Dictionary &library, const QString &libraryPath);

/// The top folders of the tracks' files.
QStringList topLevelDirectoriesFromTracks(const Array &tracks);

}  // namespace iTunesInterface
