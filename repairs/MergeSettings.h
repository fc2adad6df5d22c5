#pragma once

#include <QString>

/// What becomes of the files that are not kept, as the user chose.
enum class UnkeptPolicy { Trash = 0, Folder = 1, Playlist = 2 };

/// What a merge reads from the preferences, once.
struct MergeSettings {
  /// `unkeptActionPolicy`; a number above 2 leaves files, tracks and playlists alone.
  int policy = 0;
  /// `unkeptPath`, or the folder of the usual name on the desktop.
  QString unkeptFolder;
  bool noMergePlayedInfo = false;
  bool noIntelligentPlaylistHandling = false;
  bool noStopForTrashFailure = false;

  bool is(UnkeptPolicy wanted) const { return policy == int(wanted); }
  /// As the preferences are now. Any thread.
  static MergeSettings fromPreferences();
};
