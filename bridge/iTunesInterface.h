#pragma once

// All conversation with the music application, room by room. Further operations of this name stand in
// app/library/, with the library's file and its place.
#include "bridge/ApplicationScripts.h"
#include "bridge/ArtworkScripts.h"
#include "bridge/MusicApplication.h"
#include "bridge/NamedScripts.h"
#include "bridge/PlayingScripts.h"
#include "bridge/PlaylistScripts.h"
#include "bridge/Responsiveness.h"
#include "bridge/ScriptRunner.h"
#include "bridge/TrackScripts.h"
#include "bridge/iTunesLibInterface.h"

namespace iTunesInterface {

/// Notes that the program has changed the library: the next question by direct access waits for the change.
void dirtyLibrary();
/// True if the library can be read without its file.
bool haveDirectLibraryAccess();
/// The media folder by direct access; empty if there is none.
QString musicLibraryMediaPath();
/// The folder that holds most of the tracks' files, by direct access; empty if there is none.
QString musicLibraryMostCommonParentMediaPath();
/// All playlists by direct access; null without it.
Array getDirectPlaylists();

/// As in `iTunesLibInterface`.
int artworkAvailableForPersistentID(const QString &pid);
QByteArray artworkForPersistentID(const QString &pid);
std::optional<PlaylistSurvey>
playlistInfoWithMinCountContainingTrackPIDIgnorePlaylistNamesIgnorePlaylistNamesPrefixedWith(
    qint64 minCount, const QString &trackPID, const QStringList &ignoredNames,
    const QStringList &ignoredPrefixes);

}  // namespace iTunesInterface
