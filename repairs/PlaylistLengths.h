#pragma once

#include <QHash>
#include <QString>

struct AppState;
class ProgressSheet;

/// How long the user's own playlists are: a long one takes too long to be built anew.
class PlaylistLengths {
 public:
  /// A playlist of more tracks is not built anew. Where only direct access or a script counts them, one of so
  /// many is not either: those are asked for the playlists from a length on, and that length stays as it is.
  static constexpr qint32 kHugeTracks = 7500;

  /// Both outlive it.
  PlaylistLengths(AppState &appState, ProgressSheet &progressSheet) : state(appState), sheet(progressSheet) {}
  PlaylistLengths(const PlaylistLengths &) = delete;

  /// The length of the user's longest ordinary playlist; 0 if there is none. Main thread, which serves no
  /// events for up to 10 seconds and shows the progress sheet after 2; work that threads hand to it is done
  /// meanwhile. Where nobody answers in time the state notes that a script hangs, and the playlists at hand
  /// are counted.
  qint32 maximumUserPlaylistTracks();
  /// The names of the playlists that are too long, by their persistent IDs; by the playlists at hand, brought
  /// up to date, else by direct access, else by a script. `usingScripts` goes into the log only. Any thread,
  /// one at a time.
  QHash<QString, QString> hugePlaylistInfoUsingApplescript(bool usingScripts);

 private:
  qint32 maximumOfPlaylistsAtHand();

  AppState &state;
  ProgressSheet &sheet;
};
