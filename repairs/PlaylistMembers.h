#pragma once

#include <QSet>
#include <QStringList>

#include "values/Value.h"

/// Tells, group after group, whether one of the user's ordinary playlists holds one of a group's tracks. The
/// playlists mostly stay the same meanwhile: a second question about them is answered from a table. Holds on
/// to the playlists that were asked about last. A repair's thread.
class PlaylistMembers {
 public:
  /// As `UserPlaylists::userPlaylistsContainASongWithPID`. The playlists do not change from then on.
  bool containASongWithPID(const Array &playlists, const QStringList &pids);

 private:
  Array asked;
  QSet<QString> members;
  bool hasTable = false;
};
