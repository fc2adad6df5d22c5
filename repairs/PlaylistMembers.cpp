#include "repairs/PlaylistMembers.h"

#include <algorithm>

#include "repairs/UserPlaylists.h"

bool PlaylistMembers::containASongWithPID(const Array &playlists, const QStringList &pids) {
  if (!asked.isSame(playlists)) {
    asked = playlists;
    members.clear();
    hasTable = false;
    return UserPlaylists::userPlaylistsContainASongWithPID(playlists, pids);
  }
  if (!hasTable) {
    hasTable = true;
    UserPlaylists::visitEntries(playlists, [this](const QString &pid) {
      members.insert(pid);
      return true;
    });
  }
  return std::any_of(pids.begin(), pids.end(), [this](const QString &pid) { return members.contains(pid); });
}
