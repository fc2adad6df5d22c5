#pragma once

#include <functional>

#include "keeper/library/EntryTable.h"
#include "keeper/library/LibraryStore.h"
#include "keeper/library/PlaylistTable.h"
#include "keeper/library/StoreDatabase.h"
#include "keeper/library/TrackTable.h"
#include "tests/fixtures/TestPlatform.h"
#include "values/Keys.h"

/// A new store in the folder "music/iTunes" of each test.
class StoreFixture : public TestPlatform {
 protected:
  StoreFixture() { EXPECT_EQ(store.open(storeFolder()), QString()); }

  QString storeFolder() const { return folder(QStringLiteral("music/iTunes")); }
  static Dictionary named(const QString &name);
  TrackRow add(const QString &name) { return store.tracks().add(named(name)); }
  PlaylistRow makeList(const QString &name) { return store.playlists().make(named(name)); }
  QString nameOf(TrackRow row) { return store.tracks().value(row, keys::Name).toText(); }
  /// The names of a playlist's entries, with blanks between.
  QString namesIn(PlaylistRow playlist);
  void reopen();

  LibraryStore store;
};

/// Runs `child` in a process of its own, which tells of what it has done by writing bytes to the descriptor
/// that it gets; ends it with SIGKILL after `bytes` bytes and `microseconds` more. What it wrote in all.
QByteArray runAndKill(const std::function<void(int)> &child, qsizetype bytes, unsigned microseconds);

/// The file's tree as the system's parser reads it.
Value treeOf(const QString &xmlPath);
