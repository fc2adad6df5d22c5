#include "bridge/iTunesInterface.h"

namespace iTunesInterface {

void dirtyLibrary() {
  iTunesLibInterface::dirtyLibrary();
}

bool haveDirectLibraryAccess() {
  return iTunesLibInterface::canAccessLibrary();
}

QString musicLibraryMediaPath() {
  return iTunesLibInterface::musicLibraryMediaPath();
}

QString musicLibraryMostCommonParentMediaPath() {
  return iTunesLibInterface::musicLibraryMostCommonParentMediaPath();
}

Array getDirectPlaylists() {
  return iTunesLibInterface::getPlaylists();
}

int artworkAvailableForPersistentID(const QString &pid) {
  return iTunesLibInterface::artworkAvailableForPersistentID(pid);
}

QByteArray artworkForPersistentID(const QString &pid) {
  return iTunesLibInterface::artworkForPersistentID(pid);
}

std::optional<PlaylistSurvey>
playlistInfoWithMinCountContainingTrackPIDIgnorePlaylistNamesIgnorePlaylistNamesPrefixedWith(
    qint64 minCount, const QString &trackPID, const QStringList &ignoredNames,
    const QStringList &ignoredPrefixes) {
  return iTunesLibInterface::
      playlistInfoWithMinCountContainingTrackPIDIgnorePlaylistNamesIgnorePlaylistNamesPrefixedWith(
          minCount, trackPID, ignoredNames, ignoredPrefixes);
}

}  // namespace iTunesInterface
