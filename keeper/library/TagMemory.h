#pragma once

#include "keeper/library/LibraryStore.h"

/// Which texts of a track were changed in the library alone, with what the file's tag said then. A refresh
/// asks it, so that an old tag does not undo what the user changed. Kept in the store's notes; part of the
/// caller's transaction.
namespace tagMemory {

/// True for a key whose value comes from the file's tag.
bool isFromTag(Key key);
/// Called before the changes are stored.
void rememberBefore(LibraryStore &store, TrackRow track, const KeyChanges &changes);
/// Takes out of the changes that a file's tag brings those that only repeat what the tag said before the
/// library was changed, and forgets the keys that the tag now says anew.
void filter(LibraryStore &store, TrackRow track, KeyChanges &fromTag);
/// Before the track is removed.
void forget(LibraryStore &store, TrackRow track);

}  // namespace tagMemory
