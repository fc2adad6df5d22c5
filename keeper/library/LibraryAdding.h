#pragma once

#include "keeper/library/KeeperContext.h"
#include "keeper/library/PlaylistObject.h"

/// The command `add`: files become tracks.
namespace libraryAdding {

/// Adds a file, a folder with all that is in it, or a list of them, and where a playlist is given appends the
/// tracks to it. A file that the library has answers its track. Answers the track, for folders and lists a
/// list of tracks, and missing value for one file of a kind that the library does not take. -43 for a file
/// that is not there, before anything is added. With the setting "copyToMediaFolder" the library gets a whole
/// copy of the file; -10000 if that cannot be made.
ScriptValue add(KeeperContext &context, const ScriptValue &files, const PlaylistObject *playlist);

}  // namespace libraryAdding
