#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

#include "bridge/LibraryObject.h"
#include "values/Value.h"

/// What a quick look at the user's own playlists found.
struct PlaylistSurvey {
  struct Playlist {
    QString pid;
    QString name;
    qint64 count = 0;
    bool containsTrack = false;
  };
  /// The longest of all that were looked at.
  qint64 maxCount = 0;
  /// Those that hold the track or are long enough, in the library's order.
  std::vector<Playlist> playlists;
};

/// What is read directly, in the shape that the library file gives. Each operation may wait as
/// `libraryObject` does. Any thread.
namespace iTunesLibInterface {

/// The whole library as it stands at one moment; null if it cannot be read to its end, then with one line in
/// `error` unless that is null.
Dictionary getMusicLibraryDictionaryWithError(QString *error);
/// All tracks by their identifier; null if the library cannot be read.
Dictionary getTracks();
/// All playlists with their items; null if the library cannot be read.
Array getPlaylists();
/// One playlist, its items with locations; null if there is none, or if it cannot be read.
Dictionary getPlaylistWithPersistentID(const QString &pid);
/// A playlist with its items, with their locations only if asked for and the playlist is not the whole
/// library; null if they cannot be read.
Dictionary local_dictionaryForPlaylistWithLocations(const LibraryPlaylist &playlist, bool withLocations);
/// One track; nothing for an empty or unknown identifier.
std::optional<LibraryMediaItem> local_mediaItemForPersistentID(const QString &pid);

/// 1 if the track has a picture, 0 if not, -1 if there is no such track or it cannot
/// be read.
int artworkAvailableForPersistentID(const QString &pid);
/// The bytes of its first picture; none if there is none.
QByteArray artworkForPersistentID(const QString &pid);
/// Direct access changes nothing: an "error:" text, always.
QString mergePlayedFromTrackWithPIDToTrackWithPID(const QString &fromPID, const QString &toPID);
/// The path of a track's file; null if it has none or is unknown.
QString pathOfTrackWithPID(const QString &pid);

/// Looks at the user's visible, ordinary playlists, those left out whose name is in a list or begins with one
/// of the prefixes. Lists those with at least `minCount` entries and those that hold the track, if one is
/// given. Nothing if the library cannot be read: that must not pass for a track that no playlist holds.
std::optional<PlaylistSurvey>
playlistInfoWithMinCountContainingTrackPIDIgnorePlaylistNamesIgnorePlaylistNamesPrefixedWith(
    qint64 minCount, const QString &trackPID, const QStringList &ignoredNames,
    const QStringList &ignoredPrefixes);

}  // namespace iTunesLibInterface
