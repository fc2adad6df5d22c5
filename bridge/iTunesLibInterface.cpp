#include "bridge/iTunesLibInterface.h"

#include <algorithm>

#include "bridge/LibraryMapping.h"
#include "bridge/MusicApplication.h"
#include "platform/FileAddress.h"
#include "platform/Platform.h"
#include "support/BMLog.h"
#include "support/Checksum.h"
#include "values/Keys.h"

namespace {

double now() {
  return platform().clock->now().seconds;
}

/// A playlist's dictionary with its items.
Dictionary wholePlaylist(LibraryFramework &object, const LibraryPlaylist &playlist, bool withLocations,
                         iTunesLibInterface::PlaylistItemMaker &maker) {
  const Dictionary made = iTunesLibInterface::dictionaryOfPlaylist(playlist);
  const Array items = Array::make();
  items.reserve(playlist.itemCount);
  object.visitItems(playlist.persistentID, withLocations && !playlist.isMaster,
                    [&](const LibraryPlaylistItem &item) {
                      items.append(maker.dictionaryOfItem(item));
                      return true;
                    });
  made.set(keys::PlaylistItems, items);
  return made;
}

/// True for the playlists that a survey looks at.
bool isSurveyed(const LibraryPlaylist &playlist, const QStringList &ignoredNames,
                const QStringList &ignoredPrefixes) {
  if (!playlist.isVisible || playlist.isMaster || playlist.distinguishedKind != 0) return false;
  if (playlist.kind != LibraryPlaylist::Kind::Regular || ignoredNames.contains(playlist.name)) return false;
  return std::none_of(ignoredPrefixes.begin(), ignoredPrefixes.end(),
                      [&](const QString &prefix) { return playlist.name.startsWith(prefix); });
}

}  // namespace

namespace iTunesLibInterface {

Dictionary getMusicLibraryDictionaryWithError(QString *) {
  if (!canAccessLibrary()) return {};
  LibraryFramework *const object = libraryObject();
  const Dictionary library = Dictionary::make();
  QString address;
  if (!iTunesInterface::musicApplication().isNewSystem) address = mediaAddressOf(*object);
  if (!address.isNull()) library.set(keys::MusicFolder, address);
  const quint32 checksum = CRC(address.toUtf8());
  library.set(keys::LibraryPersistentID,
              checksum ? QString::number(checksum, 16).toUpper() : QStringLiteral("Default"));
  const double begin = now();
  const Dictionary tracks = getTracks();
  const double between = now();
  const Array playlists = getPlaylists();
  library.set(keys::Tracks, tracks);
  library.set(keys::Playlists, playlists);
  BMLog("[iTunesLib] done tracks %ld:%.2f + playlists %ld:%.2f", tracks.size(), between - begin,
        playlists.size(), now() - between);
  return library;
}

Dictionary getTracks() {
  if (!canAccessLibrary()) return {};
  LibraryFramework *const object = libraryObject();
  const Dictionary tracks = Dictionary::make();
  tracks.reserve(object->mediaItemCount());
  object->visitMediaItems([&tracks](const LibraryMediaItem &item) {
    const Dictionary track = dictionaryOfMediaItem(item);
    tracks.set(Key(track.value(keys::PersistentID).toText()), track);
    return true;
  });
  return tracks;
}

Array getPlaylists() {
  if (!canAccessLibrary()) return {};
  LibraryFramework *const object = libraryObject();
  const Array playlists = Array::make();
  PlaylistItemMaker maker;
  for (const LibraryPlaylist &playlist : object->allPlaylists()) {
    playlists.append(wholePlaylist(*object, playlist, false, maker));
  }
  return playlists;
}

Dictionary getPlaylistWithPersistentID(const QString &pid) {
  LibraryFramework *const object = libraryObject();
  if (!object) return {};
  const std::vector<LibraryPlaylist> playlists = object->allPlaylists();
  const auto found = std::find_if(playlists.rbegin(), playlists.rend(), [&pid](const LibraryPlaylist &each) {
    return hexPersistentID(each.persistentID) == pid;
  });
  return found == playlists.rend() ? Dictionary() : local_dictionaryForPlaylistWithLocations(*found, true);
}

Dictionary local_dictionaryForPlaylistWithLocations(const LibraryPlaylist &playlist, bool withLocations) {
  LibraryFramework *const object = libraryObject();
  PlaylistItemMaker maker;
  return object ? wholePlaylist(*object, playlist, withLocations, maker) : Dictionary();
}

std::optional<LibraryMediaItem> local_mediaItemForPersistentID(const QString &pid) {
  if (pid.isEmpty()) return std::nullopt;
  LibraryFramework *const object = libraryObject();
  return object ? object->mediaItem(persistentIDOfText(pid)) : std::nullopt;
}

int artworkAvailableForPersistentID(const QString &pid) {
  const std::optional<LibraryMediaItem> item = local_mediaItemForPersistentID(pid);
  return item ? int(libraryObject()->hasArtworkAvailable(item->persistentID)) : -1;
}

QByteArray artworkForPersistentID(const QString &pid) {
  const std::optional<LibraryMediaItem> item = local_mediaItemForPersistentID(pid);
  return item ? libraryObject()->artwork(item->persistentID) : QByteArray();
}

QString mergePlayedFromTrackWithPIDToTrackWithPID(const QString &, const QString &) {
  return QStringLiteral("error: playCount and lastPlayedDate variables read-only");
}

QString pathOfTrackWithPID(const QString &pid) {
  const std::optional<LibraryMediaItem> item = local_mediaItemForPersistentID(pid);
  const bool hasFile = item && item->locationType == LibraryMediaItem::LocationType::File;
  return hasFile && !item->location.isEmpty() ? pathOfFileAddress(item->location) : QString();
}

std::optional<PlaylistSurvey>
playlistInfoWithMinCountContainingTrackPIDIgnorePlaylistNamesIgnorePlaylistNamesPrefixedWith(
    qint64 minCount, const QString &trackPID, const QStringList &ignoredNames,
    const QStringList &ignoredPrefixes) {
  if (!canAccessLibrary()) return std::nullopt;
  LibraryFramework *const object = libraryObject();
  std::set<quint64> holders;
  if (!trackPID.isEmpty()) holders = object->playlistsContaining(persistentIDOfText(trackPID));
  PlaylistSurvey survey;
  for (const LibraryPlaylist &playlist : object->allPlaylists()) {
    if (!isSurveyed(playlist, ignoredNames, ignoredPrefixes)) continue;
    const bool containsTrack = holders.contains(playlist.persistentID);
    survey.maxCount = qMax(survey.maxCount, playlist.itemCount);
    if (!containsTrack && playlist.itemCount < minCount) continue;
    survey.playlists.push_back(
        {hexPersistentID(playlist.persistentID), playlist.name, playlist.itemCount, containsTrack});
  }
  return survey;
}

}  // namespace iTunesLibInterface
