#pragma once

#include <functional>

#include "keeper/library/KeeperContext.h"
#include "keeper/script/ScriptValue.h"

class AudioInfoTag;

/// What changes a track beyond its keys: its file's place, its file's tag, and what the library knows better
/// than the file. All of it throws as `ScriptObject` and `LibraryStore` do.
namespace trackEditing {

/// Where a track's file should be; empty for a track without a file.
QString filePath(KeeperContext &context, TrackRow track);
/// The same if a file is there, else empty.
QString existingFile(KeeperContext &context, TrackRow track);

/// The file, or missing value if there is none at its place.
ScriptValue location(KeeperContext &context, TrackRow track);
/// Takes an existing file as the track's; -43 if it is not there, -10006 if it is no file.
void setLocation(KeeperContext &context, TrackRow track, const ScriptValue &value);

/// The lyrics in the file; empty without a file or without lyrics.
QString lyrics(KeeperContext &context, TrackRow track);
void setLyrics(KeeperContext &context, TrackRow track, const ScriptValue &value);
/// Changes the tag of the track's file and writes it, then takes the file's new size and date into the
/// library. -43 without a file, -54 with the reason for one that cannot be written.
void changeTag(KeeperContext &context, TrackRow track, const std::function<void(AudioInfoTag &)> &edit);

/// Stores keys, one transaction; nothing happens if all of them have those values. With the setting
/// "organise", the file moves if they name it. A file that cannot be moved stays, and so does the change.
void change(KeeperContext &context, TrackRow track, const KeyChanges &changes);

/// Looks at the file again and takes over what has changed in it: its facts, and its tag's texts where nobody
/// has given the library another one since the file was read. -43 if the file is gone.
void refresh(KeeperContext &context, TrackRow track);

}  // namespace trackEditing
