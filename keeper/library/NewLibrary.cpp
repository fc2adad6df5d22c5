#include "keeper/library/NewLibrary.h"

#include "keeper/library/StoreRows.h"
#include "platform/FileAddress.h"
#include "values/Keys.h"
#include "values/PersistentID.h"

Dictionary newLibraryRoot(const QString &mediaFolder, quint64 persistentID, Date now) {
  const Dictionary root = Dictionary::make();
  root.set(keys::MajorVersion, 1);
  root.set(keys::MinorVersion, 1);
  root.set(keys::LibraryDate, now);
  root.set(keys::ApplicationVersion, QStringLiteral("12.0"));
  root.set(keys::Features, 5);
  root.set(keys::ShowContentRatings, true);
  root.set(keys::MusicFolder, fileAddressOfPath(mediaFolder) + u'/');
  root.set(keys::LibraryPersistentID, hexPersistentID(persistentID));
  root.set(keys::Tracks, Dictionary::make());
  root.set(keys::Playlists, Array::make());
  return root;
}

Dictionary newMasterPlaylist() {
  const Dictionary playlist = Dictionary::make();
  playlist.set(keys::Name, QStringLiteral("Library"));
  playlist.set(keys::Master, true);
  playlist.set(keys::AllItems, true);
  playlist.set(keys::Visible, false);
  return playlist;
}
