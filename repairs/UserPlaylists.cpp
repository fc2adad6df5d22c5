#include "repairs/UserPlaylists.h"

#include <algorithm>
#include <array>

#include "bridge/LocalizedMessage.h"
#include "values/Keys.h"

namespace UserPlaylists {

namespace {

bool isIgnored(const QString &name, const QStringList &ownNames) {
  return name.startsWith(tempPlaylistPrefix()) || ownNames.contains(name);
}

}  // namespace

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
  return isIgnored(name, ownNames());
}

bool isOrdinary(const Dictionary &playlist, const QStringList &own) {
  return isUserPlaylist(playlist) && !isIgnored(playlist.value(keys::Name).toText(), own);
}

bool visitEntries(const Array &playlists, const std::function<bool(const QString &)> &each) {
  const QStringList own = ownNames();
  for (const Value &value : playlists) {
    const Dictionary &playlist = value.toDictionary();
    if (!isOrdinary(playlist, own)) continue;
    const Array &items = playlist.value(keys::PlaylistItems).toArray();
    for (const Value &item : items) {
      const Value &pid = item.toDictionary().value(keys::TrackPersistentID);
      if (pid.isText() && !each(pid.toText())) return false;
    }
  }
  return true;
}

bool userPlaylistsContainASongWithPID(const Array &playlists, const QStringList &pids) {
  return !visitEntries(playlists, [&pids](const QString &pid) { return !pids.contains(pid); });
}

}  // namespace UserPlaylists
