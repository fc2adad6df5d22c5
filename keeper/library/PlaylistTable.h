#pragma once

#include <span>

#include "keeper/library/StoreRows.h"

class EntryTable;
class StoreDatabase;

/// The playlists of a store, in the library's order, without their entries. Holds what `PlaylistInfo` says of
/// each in memory. A row that is gone reads as nothing. All other rules are those of `LibraryStore`.
class PlaylistTable {
 public:
  PlaylistTable(StoreDatabase &database, EntryTable &entries);

  /// All playlists, folders among them. Valid until the next change.
  const std::vector<PlaylistInfo> &all();
  qsizetype count() { return qsizetype(all().size()); }
  /// Null if the playlist is gone. Valid until the next change.
  const PlaylistInfo *info(PlaylistRow row);
  bool exists(PlaylistRow row) { return info(row) != nullptr; }
  /// The playlist that holds every track; a library always has one.
  PlaylistRow master();
  PlaylistRow withPersistentID(quint64 id);
  /// Without regard to case, in order.
  PlaylistRows named(const QString &name);
  /// Those whose bits of `mask` (of `storeSchema::PlaylistFlag`) are `flags`, in order.
  PlaylistRows withFlags(int mask, int flags);
  /// What lies directly in a folder, or at the top for none, in order.
  PlaylistRows children(PlaylistRow folder);

  /// All keys in order; "Playlist Items" stands in its place, empty. Null if the playlist is gone.
  Dictionary record(PlaylistRow row);
  Value value(PlaylistRow row, Key key);

  /// A new playlist with these keys ("Name" among them), a fresh "Playlist ID" and "Playlist Persistent ID",
  /// at the end; in a folder if one is given. With the key "Folder" it is a folder.
  PlaylistRow make(const Dictionary &keys, PlaylistRow folder = PlaylistRow::None);
  /// Stores keys. The IDs, the items and the folder cannot be changed by it. False if the playlist is gone.
  bool set(PlaylistRow row, const KeyChanges &changes);
  /// Moves a playlist into a folder, or to the top for none. False if it is gone, if the folder is none, or
  /// if it lies in the playlist itself.
  bool moveTo(PlaylistRow row, PlaylistRow folder);
  /// Removes playlists with their entries, folders with all that lies in them. The master playlist stays.
  void remove(std::span<const PlaylistRow> rows);

  /// Forgets what is held in memory.
  void forget();

 private:
  friend class LibraryImport;
  PlaylistRow insert(const Dictionary &record, quint64 persistentID, qint64 position);
  void load();
  void write(PlaylistRow row, const Dictionary &record);

  StoreDatabase &database;
  EntryTable &entries;
  std::vector<PlaylistInfo> infos;
  bool isLoaded = false;
};
