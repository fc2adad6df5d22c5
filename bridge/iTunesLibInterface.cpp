#include "bridge/iTunesLibInterface.h"

#include <algorithm>

#include "bridge/LibraryMapping.h"
#include "bridge/MusicApplication.h"
#include "platform/FileAddress.h"
#include "platform/Platform.h"
#include "support/BMLog.h"
#include "support/Checksum.h"
#include "values/Keys.h"
#include "values/PersistentID.h"

namespace {

double now() {
  return platform().clock->now().seconds;
}

/// A part of a library must not pass for the whole.
void logBreak(LibraryFramework &object, const char *what) {
  BMLog("!!! [iTunesLib] the %s could not be read to their end: %@", what, object.problem());
}

/// A playlist's dictionary with its items; null if they cannot be read.
Dictionary wholePlaylist(LibraryFramework &object, const LibraryPlaylist &playlist, bool withLocations,
                         iTunesLibInterface::PlaylistItemMaker &maker) {
  const Dictionary made = iTunesLibInterface::dictionaryOfPlaylist(playlist);
  const Array items = Array::make();
  items.reserve(playlist.itemCount);
  const bool wereRead = object.visitItems(playlist.persistentID, withLocations && !playlist.isMaster,
                                          [&](const LibraryPlaylistItem &item) {
                                            items.append(maker.dictionaryOfItem(item));
                                            return true;
                                          });
  if (!wereRead) logBreak(object, "items of a playlist");
  if (!wereRead) return {};
  made.set(keys::PlaylistItems, items);
  return made;
}

/// All tracks; null if they cannot be read.
Dictionary readTracks(LibraryFramework &object) {
  const Dictionary tracks = Dictionary::make();
  tracks.reserve(object.mediaItemCount());
  const bool wereRead = object.visitMediaItems([&tracks](const LibraryMediaItem &item) {
    const Dictionary track = iTunesLibInterface::dictionaryOfMediaItem(item);
    tracks.set(Key(track.value(keys::PersistentID).toText()), track);
    return true;
  });
  if (!wereRead) logBreak(object, "tracks");
  return wereRead ? tracks : Dictionary();
}

/// All playlists; null if they, or the items of one, cannot be read.
Array readPlaylists(LibraryFramework &object) {
  const auto all = object.allPlaylists();
  if (!all) logBreak(object, "playlists");
  if (!all) return {};
  const Array playlists = Array::make();
  iTunesLibInterface::PlaylistItemMaker maker;
  for (const LibraryPlaylist &playlist : *all) {
    const Dictionary whole = wholePlaylist(object, playlist, false, maker);
    if (whole.isNull()) return {};
    playlists.append(whole);
  }
  return playlists;
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

Dictionary getMusicLibraryDictionaryWithError(QString *error) {
  if (!canAccessLibrary()) return {};
  LibraryFramework *const object = libraryObject();
  // A playlist never names a track that was added after the tracks were read.
  const LibrarySnapshot snapshot(*object);
  const Dictionary library = Dictionary::make();
  QString address;
  if (!iTunesInterface::musicApplication().isNewSystem) address = mediaAddressOf(*object);
  if (!address.isNull()) library.set(keys::MusicFolder, address);
  const quint32 checksum = CRC(address.toUtf8());
  library.set(keys::LibraryPersistentID,
              checksum ? QString::number(checksum, 16).toUpper() : QStringLiteral("Default"));
  const double begin = now();
  const Dictionary tracks = readTracks(*object);
  const double between = now();
  const Array playlists = tracks.isNull() ? Array() : readPlaylists(*object);
  if (playlists.isNull()) {
    if (error) *error = QStringLiteral("the library could not be read to its end");
    return {};
  }
  library.set(keys::Tracks, tracks);
  library.set(keys::Playlists, playlists);
  BMLog("[iTunesLib] done tracks %ld:%.2f + playlists %ld:%.2f", tracks.size(), between - begin,
        playlists.size(), now() - between);
  return library;
}

Dictionary getTracks() {
  return canAccessLibrary() ? readTracks(*libraryObject()) : Dictionary();
}

Array getPlaylists() {
  if (!canAccessLibrary()) return {};
  LibraryFramework *const object = libraryObject();
  const LibrarySnapshot snapshot(*object);
  return readPlaylists(*object);
}

Dictionary getPlaylistWithPersistentID(const QString &pid) {
  LibraryFramework *const object = libraryObject();
  if (!object) return {};
  const auto playlists = object->allPlaylists();
  if (!playlists) logBreak(*object, "playlists");
  if (!playlists) return {};
  const auto found =
      std::find_if(playlists->rbegin(), playlists->rend(),
                   [&pid](const LibraryPlaylist &each) { return hexPersistentID(each.persistentID) == pid; });
  return found == playlists->rend() ? Dictionary() : local_dictionaryForPlaylistWithLocations(*found, true);
}

Dictionary local_dictionaryForPlaylistWithLocations(const LibraryPlaylist &playlist, bool withLocations) {
  LibraryFramework *const object = libraryObject();
  PlaylistItemMaker maker;
  return object ? wholePlaylist(*object, playlist, withLocations, maker) : Dictionary();
}

std::optional<LibraryMediaItem> local_mediaItemForPersistentID(const QString &pid) {
  if (pid.isEmpty()) return std::nullopt;
  LibraryFramework *const object = libraryObject();
  return object ? object->mediaItem(persistentIDOfText(pid).value_or(0)) : std::nullopt;
}

int artworkAvailableForPersistentID(const QString &pid) {
  const std::optional<LibraryMediaItem> item = local_mediaItemForPersistentID(pid);
  const std::optional<bool> has =
      item ? libraryObject()->hasArtworkAvailable(item->persistentID) : std::nullopt;
  return has ? int(*has) : -1;
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
  const LibrarySnapshot snapshot(*object);
  std::optional<std::set<quint64>> holders = std::set<quint64>();
  if (!trackPID.isEmpty()) holders = object->playlistsContaining(persistentIDOfText(trackPID).value_or(0));
  const auto playlists = holders ? object->allPlaylists() : std::nullopt;
  if (!playlists) logBreak(*object, "playlists");
  if (!playlists) return std::nullopt;
  PlaylistSurvey survey;
  for (const LibraryPlaylist &playlist : *playlists) {
    if (!isSurveyed(playlist, ignoredNames, ignoredPrefixes)) continue;
    const bool containsTrack = holders->contains(playlist.persistentID);
    survey.maxCount = qMax(survey.maxCount, playlist.itemCount);
    if (!containsTrack && playlist.itemCount < minCount) continue;
    survey.playlists.push_back(
        {hexPersistentID(playlist.persistentID), playlist.name, playlist.itemCount, containsTrack});
  }
  return survey;
}

}  // namespace iTunesLibInterface
