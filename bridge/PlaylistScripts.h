#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <optional>

#include "values/Value.h"

/// Changes and questions about playlists, which are named by their persistent IDs unless a line says
/// otherwise. Results and threads as in bridge/TrackScripts.h.
namespace iTunesInterface {

/// Adds a track to the playlist of a name, which is made if there is none whatever `create` says: a track
/// that is in it already is not added again.
std::optional<QString> addTrackWithPIDToPlaylistNamedCreate(const QString &pid, const QString &playlist,
                                                            bool create);

/// Adds a track at the end of a playlist. "Done", or "error: ...".
std::optional<QString> addTrackWithPIDToPlaylistWithPID(const QString &pid, const QString &playlistPID);

/// Removes the playlists whose names begin so, a temporary playlist with the only whole copy of another one
/// excepted: that is put back first.
void removePlaylistsWithNamesStartingWith(const QString &prefix);

/// One step of the rebuild of a playlist with old tracks replaced by a new one. A text that begins with
/// "Done" ends it, one with "broken:" or "error:" has failed, any other asks for the next step; nothing if
/// nobody answers.
std::optional<QString> incrementalRebuildPlaylist(const QString &playlistPID, const QStringList &oldPIDs,
                                                  const QString &newPID, const QString &temporaryName);

/// Nothing, and nothing is done: the rebuild goes step by step.
std::optional<QString> rebuildPlaylistUsingTempNameOldTrackPIDsNewTrackPID(const QString &playlistPID,
                                                                           const QString &temporaryName,
                                                                           const QStringList &oldPIDs,
                                                                           const QString &newPID);

/// The names that a count of the user's playlists leaves out: three playlists of our own, and a prefix.
struct IgnoredPlaylists {
  QString unkept, adopted, temporaryPrefix, converting;
};

/// The length of the longest ordinary playlist of the user, as text; nothing if nobody answers.
std::optional<QString> getMaxPlaylistLength(const IgnoredPlaylists &ignored);

/// The names of the ordinary playlists of that length or more, by their persistent IDs; none if the answer
/// cannot be read.
QHash<QString, QString> playlistNamesAtLength(qint64 length, const IgnoredPlaylists &ignored);

/// A dictionary for each playlist with `Name`, `Playlist Persistent ID`, `Distinguished Kind`, `Smart Info`
/// ("true", or absent) and `Parent Persistent ID`, all texts. A null array if nobody answers.
Array playlistsInfo();

/// What a `Distinguished Kind` is called: "Music" for "4"; the argument itself if it has no name.
Value playlistTypeForKind(const Value &kind);

}  // namespace iTunesInterface
