#pragma once

#include <list>
#include <span>
#include <unordered_map>

#include "keeper/library/StoreRows.h"

class StoreDatabase;

/// The entries of the playlists. Holds two numbers for each entry of the playlists that were asked for last.
/// A playlist that is gone has no entries. All other rules are those of `LibraryStore`.
class EntryTable {
 public:
  explicit EntryTable(StoreDatabase &database);

  qsizetype count(PlaylistRow playlist);
  /// The entry at an index from 0; one of no track if it is out of range.
  PlaylistEntry at(PlaylistRow playlist, qsizetype index);
  /// All entries in order. Valid until the next call.
  const std::vector<PlaylistEntry> &all(PlaylistRow playlist);
  /// The tracks of all entries, repeats included.
  TrackRows tracks(PlaylistRow playlist);
  /// Where an entry stands now; nothing if it is gone.
  std::optional<qsizetype> indexOf(PlaylistRow playlist, qint64 position);
  bool contains(PlaylistRow playlist, TrackRow track);
  /// The entries of one track, in order.
  std::vector<PlaylistEntry> ofTrack(PlaylistRow playlist, TrackRow track);

  /// Puts tracks at the end, in their order, repeats allowed. Throws if one of them is gone. The new entries.
  std::vector<PlaylistEntry> append(PlaylistRow playlist, std::span<const TrackRow> tracks);
  /// Removes the entries at these positions; those that are gone count as removed.
  void remove(PlaylistRow playlist, std::span<const qint64> positions);
  /// Makes these tracks the playlist's entries. Positions of before mean nothing afterwards.
  void replaceAll(PlaylistRow playlist, std::span<const TrackRow> tracks);

  /// Forgets what is held in memory.
  void forget();

 private:
  friend class LibraryImport;
  friend class TrackTable;
  friend class PlaylistTable;
  struct Held {
    PlaylistRow playlist = PlaylistRow::None;
    std::vector<PlaylistEntry> entries;
  };
  Held &hold(PlaylistRow playlist);
  Held *find(PlaylistRow playlist);
  void drop(PlaylistRow playlist);
  /// Forgets the entries of tracks that are gone.
  void dropTracks(std::span<const TrackRow> gone);
  qint64 lastPosition(PlaylistRow playlist);
  void limit();

  StoreDatabase &database;
  /// The one asked for last stands first.
  std::list<Held> held;
  std::unordered_map<PlaylistRow, qsizetype> counts;
};
