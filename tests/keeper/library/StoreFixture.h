#pragma once

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

/// The file's tree as the system's parser reads it.
Value treeOf(const QString &xmlPath);
