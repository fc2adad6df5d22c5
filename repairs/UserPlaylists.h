#pragma once

#include <QStringList>

#include "bridge/PlaylistScripts.h"
#include "values/Value.h"

/// Which playlists are the user's own. Any thread.
namespace UserPlaylists {

/// The beginning of the names of all temporary playlists.
QString tempPlaylistPrefix();
/// The names of the playlists of our own: for unkept, adopted and converted tracks.
QStringList ownNames();
/// The same with the prefix, as counts by scripts take them.
iTunesInterface::IgnoredPlaylists ignoredPlaylists();

/// True for a playlist that the user made and fills by hand.
bool isUserPlaylist(const Dictionary &playlist);
/// True for the names of our own playlists and for temporary ones.
bool shouldIgnorePlaylistWithName(const QString &name);
/// True for a playlist for which the first holds and the second, of its name, does not.
bool isOrdinary(const Dictionary &playlist);

}  // namespace UserPlaylists
