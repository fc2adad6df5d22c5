#pragma once

#include <QString>

/// What becomes of the files that are not kept, as the user chose.
enum class UnkeptPolicy { Trash = 0, Folder = 1, Playlist = 2 };
/// What commands and reports call the policies, in their order.
inline constexpr QStringView kUnkeptPolicyNames[] = {u"trash", u"folder", u"playlist"};

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
  /// The tracks that are not kept leave the library.
  bool removesTracks() const { return is(UnkeptPolicy::Trash) || is(UnkeptPolicy::Folder); }
  /// As the preferences are now. Any thread.
  static MergeSettings fromPreferences();
};
