#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <atomic>
#include <mutex>
#include <optional>

#include "values/Value.h"

struct AppState;
class ProgressSheet;

/// Puts a new track into the places that old tracks have in the user's playlists, and finds out which
/// playlists are too long for that.
class PlaylistRepair {
 public:
  /// From so many tracks on the user is warned, and above so many a playlist is not built anew.
  static constexpr qint32 kWarnTracks = 750;
  static constexpr qint32 kHugeTracks = 7500;

  PlaylistRepair(AppState &appState, ProgressSheet &progressSheet) : state(appState), sheet(progressSheet) {}
  PlaylistRepair(const PlaylistRepair &) = delete;

  /// True for a playlist that the user made and fills by hand.
  static bool isUserPlaylist(const Dictionary &playlist);
  /// The beginning of the names of all temporary playlists.
  static QString tempPlaylistPrefix();
  /// True for the names of our own playlists and for temporary ones.
  static bool shouldIgnorePlaylistWithName(const QString &name);
  /// True if one of the tracks stands in one of the user's playlists.
  static bool userPlaylistsContainASongWithPID(const Array &playlists, const QStringList &pids);
  /// The tracks as lines for an alert.
  static QString summaryOfTrackDicts(const Array &tracks);

  /// Has the new track take the old ones' places in all the user's playlists. Nothing, or a text: one that
  /// begins with "broken:" or "error:" is a failure. May run for minutes; a repair's thread.
  std::optional<QString> doPlaylistReplaceOfSongPIDsWithSongPID(const QStringList &oldPIDs,
                                                                const QString &newPID);
  /// The length of the user's longest ordinary playlist. Main thread, which waits up to 10 seconds.
  qint32 maximumUserPlaylistTracks();
  /// The names of the playlists that are too long to be built anew, by their persistent IDs. Any thread.
  QHash<QString, QString> hugePlaylistInfoUsingApplescript(bool usingScripts);
  /// What a "broken:" text tells: `playlists`, `tracks` and `tracksummaries`; null for any other text.
  Dictionary playListReplaceErrorDictionaryFromString(const QString &result) const;

 private:
  void maximumUserPlaylistTracksThread();

  AppState &state;
  ProgressSheet &sheet;
};
