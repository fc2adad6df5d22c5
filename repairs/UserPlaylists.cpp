#include "repairs/UserPlaylists.h"

#include <algorithm>
#include <array>

#include "bridge/LocalizedMessage.h"
#include "values/Keys.h"

namespace UserPlaylists {

QString tempPlaylistPrefix() {
  return QStringLiteral("ZZZ_TF");
}

QStringList ownNames() {
  return {localizedMessage(QStringLiteral("UnkeptPlaylist")),
          localizedMessage(QStringLiteral("AdoptedPlaylist")),
          localizedMessage(QStringLiteral("ConvertingPlaylist"))};
}

iTunesInterface::IgnoredPlaylists ignoredPlaylists() {
  const QStringList names = ownNames();
  return {names[0], names[1], tempPlaylistPrefix(), names[2]};
}

bool isUserPlaylist(const Dictionary &playlist) {
  // The key counts by being there: a library writes some of them with the value false.
  static const std::array<Key, 7> foreign = {keys::SmartInfo, keys::Folder,       keys::DistinguishedKind,
                                             keys::Podcasts,  keys::PartyShuffle, keys::Music,
                                             keys::Master};
  return std::none_of(foreign.begin(), foreign.end(), [&](Key key) { return playlist.contains(key); });
}

bool shouldIgnorePlaylistWithName(const QString &name) {
  return name.startsWith(tempPlaylistPrefix()) || ownNames().contains(name);
}

bool isOrdinary(const Dictionary &playlist) {
  return isUserPlaylist(playlist) && !shouldIgnorePlaylistWithName(playlist.value(keys::Name).toText());
}

}  // namespace UserPlaylists
