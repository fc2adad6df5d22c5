#pragma once

#include <QString>
#include <memory>

#include "keeper/library/StoreError.h"
#include "keeper/library/StoreRows.h"
#include "values/Value.h"

class EntryTable;
class PlaylistTable;
class StoreDatabase;
class TrackTable;

/// The library of Music Keeper on disk: one database file in the library's folder. Each change is a
/// transaction of its own and has reached the disk when its operation returns, unless `deferDisk` says
/// otherwise; within a `StoreBatch` the whole batch is one. The file's modification date is set after each
/// of them. Operations throw `StoreError`. One thread; another thread opens a store of its own on the same
/// folder and sees what was committed before it looks.
class LibraryStore {
 public:
  enum class Access { ReadWrite, ReadOnly };

  LibraryStore();
  ~LibraryStore();

  /// Opens the store of a folder. With `ReadWrite` a missing folder and store are made (an empty library with
  /// its master playlist), and an older version is brought up to date after a copy was kept beside it. Empty,
  /// or one line that says what is wrong; then nothing is open and nothing was changed. Does not throw.
  [[nodiscard]] QString open(const QString &folder, Access access = Access::ReadWrite);
  void close();
  bool isOpen() const;

  /// From now on until it is closed, changes do not wait for the disk: they outlast this process, in their
  /// order, and the machine's end once `storeLog::flush` has returned.
  void deferDisk();
  /// Counts the transactions that this object has committed.
  quint64 commitCount() const;

  /// Whether a folder holds a store.
  static bool existsIn(const QString &folder);
  /// The store's file, and the folder that it is in.
  QString path() const;
  QString folder() const;

  TrackTable &tracks();
  PlaylistTable &playlists();
  EntryTable &entries();

  /// The library's own keys in their order; "Tracks" and "Playlists" stand in their places, empty.
  Dictionary root();
  void setRoot(const KeyChanges &changes);

  /// Counts the changes of the library since it was made; the same number means the same library.
  qint64 changeStamp();
  /// Notices that another store on this folder has changed something, such as an import on a thread of its
  /// own; true if so. Costs a look at a counter.
  bool refresh();

  /// A note that the store keeps beside the library, under a name of the caller's; null if there is none.
  /// Notes are durable, and no change of the library.
  Value note(const QString &name);
  void setNote(const QString &name, const Value &value);

  /// Looks at the whole file; empty if it is sound, else what is wrong with it. Takes seconds for a large
  /// library.
  QString integrityReport();

  StoreDatabase &database() { return *base; }

 private:
  friend class LibraryImport;
  void prepare(const QString &folder);
  void createLibrary(const QString &folder);

  std::unique_ptr<StoreDatabase> base;
  std::unique_ptr<EntryTable> entryTable;
  std::unique_ptr<PlaylistTable> playlistTable;
  std::unique_ptr<TrackTable> trackTable;
};
