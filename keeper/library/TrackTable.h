#pragma once

#include <QVariant>
#include <functional>
#include <span>

#include "keeper/library/StoreRows.h"

class StoreDatabase;
class EntryTable;
class PlaylistTable;

/// The tracks of a store, in the library's order. Holds a number for each track and no records. A row that is
/// gone reads as nothing: empty answers, no throw. All other rules are those of `LibraryStore`.
class TrackTable {
 public:
  TrackTable(StoreDatabase &database, PlaylistTable &playlists, EntryTable &entries);

  qsizetype count();
  /// All tracks. Valid until the next change.
  const TrackRows &rows();
  /// The track at an index from 0; none if it is out of range.
  TrackRow at(qsizetype index);
  /// Where a track stands in the library.
  std::optional<qsizetype> indexOf(TrackRow row);
  bool exists(TrackRow row);

  TrackRow withPersistentID(quint64 id);
  /// By "Track ID".
  TrackRow withDatabaseID(qint64 id);
  /// Texts are compared without regard to case, in the library's order.
  TrackRows named(const QString &name);
  TrackRows named(const QString &name, const QString &artist);
  TrackRows byArtist(const QString &artist);
  /// By the path of the location, exactly.
  TrackRows atPath(const QString &path);
  /// Those whose bits of `mask` (of `storeSchema::TrackFlag`) are `flags`.
  TrackRows withFlags(int mask, int flags);

  /// 0 if the track is gone.
  quint64 persistentID(TrackRow row);
  qint64 databaseID(TrackRow row);
  int flags(TrackRow row);
  /// All keys of a track, in order: a copy of its own. Null if the track is gone.
  Dictionary record(TrackRow row);
  /// One key of a track; null if it has none or is gone.
  Value value(TrackRow row, Key key);
  /// One key of every track, in order, without the rest of their records.
  void visitColumn(Key key, const std::function<void(TrackRow, const Value &)> &visit);
  /// The same for the entries of a playlist, repeats included.
  void visitColumnOf(PlaylistRow playlist, Key key, const std::function<void(const Value &)> &visit);

  /// Stores keys: a key that is there keeps its place. "Track ID" and "Persistent ID" cannot be changed.
  /// False, and no change, if the track is gone.
  bool set(TrackRow row, const KeyChanges &changes);
  /// A new track with these keys and a fresh "Track ID" and "Persistent ID", at the end of the library and of
  /// its master playlist.
  TrackRow add(const Dictionary &keys);
  /// Removes tracks and every entry of theirs; those that are gone count as removed.
  void remove(std::span<const TrackRow> rows);

  /// A persistent ID that neither a track nor a playlist has.
  quint64 freshPersistentID();
  /// Forgets what is held in memory.
  void forget();

 private:
  friend class LibraryImport;
  TrackRows query(const QString &condition, const QVariantList &values);
  /// Writes a track whose keys already have their IDs.
  TrackRow insert(const Dictionary &record, quint64 persistentID, qint64 databaseID, const QString &member);
  void update(TrackRow row, const Dictionary &before, const Dictionary &after);

  StoreDatabase &database;
  PlaylistTable &playlists;
  EntryTable &entries;
  TrackRows order;
  bool isLoaded = false;
};
