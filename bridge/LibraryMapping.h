#pragma once

#include <QString>
#include <unordered_map>

#include "platform/LibraryFramework.h"
#include "values/Value.h"

/// How what direct access tells becomes the very dictionaries that the library file gives.
namespace iTunesLibInterface {

/// A track's dictionary, mutable: only what is there, numbers only if not 0, "Track Type" always.
Dictionary dictionaryOfMediaItem(const LibraryMediaItem &item);
/// A playlist's dictionary, mutable, with no items yet.
Dictionary dictionaryOfPlaylist(const LibraryPlaylist &playlist);

/// Makes the items of playlists. An item without a location is the same in each playlist that holds its
/// track, so such dictionaries share their memory until one is changed. One thread.
class PlaylistItemMaker {
 public:
  /// A new dictionary for an entry, mutable; "Location" if the entry names one.
  Dictionary dictionaryOfItem(const LibraryPlaylistItem &item);

 private:
  std::unordered_map<quint64, Dictionary> patterns;
};

}  // namespace iTunesLibInterface
