#pragma once

#include "values/Value.h"

/// What a library without tracks is made of: the keys of its root, "Tracks" and "Playlists" empty in their
/// places, for media in a folder.
Dictionary newLibraryRoot(const QString &mediaFolder, quint64 persistentID, Date now);
/// The keys of a master playlist, without IDs.
Dictionary newMasterPlaylist();
