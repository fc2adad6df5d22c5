#pragma once

#include <QString>
#include <optional>

#include "values/Value.h"

/// Changes and questions about one track, which is named by its persistent ID (PID). A change that worked
/// gives nothing back unless its line says otherwise; a text that begins with "error" is a failure, and the
/// words "timed out" in it mark one that is worth another try. Untimed; any thread, as a rule a repair's.
namespace iTunesInterface {

/// Has the application look at a track's file again: the path that it has now, a text that begins with
/// "error", or nothing if the application does not run or answer or the PID is empty.
std::optional<QString> refreshAndGetPathOfSongWithPID(const QString &pid);
/// The same by the database's number, in a playlist or, for a null one, in the first; nothing for a number
/// below 1.
std::optional<QString> refreshAndGetPathOfSongWithIDInPlaylist(qint32 id, const QString &playlist);
/// The same by names; nothing if one is empty.
std::optional<QString> refreshAndGetPathOfSongWithTitleArtist(const QString &title, const QString &artist);

/// Sets "Artist", "Album" or "Album Artist" of a track; the value may hold anything. "1" if that worked.
std::optional<QString> changeValueInTrackWithPIDOfTypeToValue(const QString &pid, const QString &type,
                                                              const QString &value);

/// Moves the plays and skips of one track to another, whose counts become the sums. No answer is a failure
/// here, too: nothing comes back only once all has gone over.
std::optional<QString> mergePlayedFromTrackWithPIDToTrackWithPID(const QString &fromPID,
                                                                 const QString &toPID);

/// The plays and skips of two tracks.
struct PlayedCounts {
  qint64 fromPlays = 0, fromSkips = 0, toPlays = 0, toSkips = 0;
};
/// Nothing with a text in `problem` if nobody answers, or if one of the tracks is not there.
std::optional<PlayedCounts> playedCountsOfTracksWithPIDs(const QString &fromPID, const QString &toPID,
                                                         QString *problem);
/// Behind a merge of played information that was broken off: takes from the first track what the second has
/// got of it already. `before`: the counts before that merge, which were read so many seconds ago. What may
/// as well have been played since is left.
std::optional<QString> settlePlayedOfTracksWithPIDs(const QString &fromPID, const QString &toPID,
                                                    const PlayedCounts &before, qint64 secondsAgo);

/// Gives a track the names, numbers and texts of another, but not its counts and dates.
std::optional<QString> doCopyInfoFromTrackPIDToTrackPid(const QString &fromPID, const QString &toPID);

/// Makes a file the location of a track: "OK", "error: ...", or the path that the application names for the
/// track instead. Nothing if the application does not run or a text is empty.
std::optional<QString> reunitePathWithPID(const QString &path, const QString &pid);

/// Adds a file to the library and, unless the name is empty, to that playlist, which is made if there is
/// none. The PID of the track, or "error: ..."; nothing if the application does not run or the path is empty.
std::optional<QString> addToiTunesSongAtPathToPlaylistNamed(const QString &path, const QString &playlist);

/// Takes a track out of the library; its file stays. Any text is a failure.
std::optional<QString> removeSongWithPID(const QString &pid);
/// The same for who goes on to delete the file: where nobody answers, that is a failure too.
std::optional<QString> removeSongWithPIDForCertain(const QString &pid);
/// True for a failure behind which the change may have been made all the same: no answer, or none in time.
bool mayHaveBeenDone(const QString &failure);
/// True for the problem of `playedCountsOfTracksWithPIDs` that the library does not have one of the tracks.
bool isNoSuchTrack(const QString &problem);

/// A property of a track by its place in a playlist, counted from 1; -1, or nothing, if there is none.
qint32 intValueOfFieldOfTrackIndexOfPlayList(const QString &field, qint32 index, const QString &playlist);
std::optional<QString> valueOfFieldOfTrackIndexOfPlayList(const QString &field, qint32 index,
                                                          const QString &playlist);
/// A property of the first track of that name in the playlist "Library".
std::optional<QString> valueOfFieldOfTrackNamed(const QString &field, const QString &name);

}  // namespace iTunesInterface
