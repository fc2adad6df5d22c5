#pragma once

#include <functional>
#include <unordered_map>
#include <unordered_set>

#include "keeper/library/LibraryStore.h"
#include "keeper/library/LocationMapping.h"

struct LibrarySource;

/// How far an import is. `total` is 0 while the file is being read.
struct ImportProgress {
  qsizetype done = 0;
  qsizetype total = 0;
};

struct ImportOptions {
  /// The first one that fits a location is applied to it.
  std::vector<LocationMapping> mappings;
  /// Told a few times a second, on the thread of the import; false cancels it.
  std::function<bool(const ImportProgress &)> onProgress;
};

/// What an import did.
struct ImportReport {
  qsizetype tracks = 0;
  qsizetype playlists = 0;
  qsizetype entries = 0;
  /// Tracks and playlists that came without a persistent ID, and with one that another one has: they got
  /// fresh ones.
  qsizetype withoutID = 0;
  qsizetype withDoubledID = 0;
  /// Tracks whose "Track ID" was missing or another one's.
  qsizetype renumbered = 0;
  /// Playlist items of tracks that the file does not have.
  qsizetype droppedItems = 0;
  /// Members of "Tracks" and "Playlists" that were no dictionaries.
  qsizetype unreadable = 0;
  /// Locations that a mapping changed.
  qsizetype mapped = 0;
  /// What is wrong with a damaged file of which the readable part was imported; empty as a rule.
  QString damage;
};

/// Fills a store with the library of an XML file, in place of what it held: every key of the library, its
/// tracks, its playlists and their items in type and order. One transaction. A library that held tracks is
/// kept beside the store as "Music Library (before import).musiclibrary" first. One thread, which may be
/// another one than that of the scripts if the store is its own.
class LibraryImport {
 public:
  explicit LibraryImport(LibraryStore &into);

  /// Empty, or one line that says what went wrong; then the store is as it was. Does not throw.
  [[nodiscard]] QString run(const QString &xmlPath, const ImportOptions &options = {});
  const ImportReport &report() const { return counts; }

  /// The file that a store was filled from last, and that file's date then; an empty path if there was none.
  static QString importedFile(LibraryStore &store, Date *date = nullptr);

 private:
  struct Stop {};

  void fill(const LibrarySource &source, const QString &path);
  void keepOldLibrary();
  void clear();
  void insertTracks(const Dictionary &tracks);
  void insertTrack(const QString &member, const Dictionary &track);
  qint64 numberOf(const Dictionary &track, const QString &member);
  quint64 idOf(const Dictionary &thing, Key key, bool isTrack);
  void map(const Dictionary &record, Key key);
  void insertPlaylists(const Array &playlists);
  void insertPlaylist(const Dictionary &playlist);
  void insertMaster();
  void insertEntries(PlaylistRow playlist, const Array &items);
  void takeUsedNumbers(const Dictionary &tracks, const Array &playlists);
  void step();

  LibraryStore &store;
  const ImportOptions *options = nullptr;
  ImportReport counts;
  ImportProgress progress;
  std::unordered_set<quint64> trackIDs;
  std::unordered_set<quint64> playlistIDs;
  std::unordered_map<qint64, TrackRow> rowsByNumber;
  qint64 lastNumber = 0;
  qint64 position = 0;
};
