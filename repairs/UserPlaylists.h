#pragma once

#include <QStringList>
#include <functional>

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
/// True for a playlist for which the first holds and the second, of its name, does not. Who asks about many
/// gives the names of our own, which are looked up once for all.
bool isOrdinary(const Dictionary &playlist, const QStringList &own = ownNames());
/// Calls `each` with the persistent ID of every entry of the ordinary ones, until it answers false. False if
/// it did.
bool visitEntries(const Array &playlists, const std::function<bool(const QString &)> &each);
/// True if one of the tracks stands in an ordinary one.
bool userPlaylistsContainASongWithPID(const Array &playlists, const QStringList &pids);

}  // namespace UserPlaylists
