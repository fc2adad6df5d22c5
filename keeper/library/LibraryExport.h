#pragma once

#include "keeper/library/LibraryStore.h"

class LibraryXmlWriter;

/// Writes a store's library as the XML file that the music application writes: into a new file, which has
/// reached the disk before it takes the place of the old one. A file in the way that no export of this store
/// wrote is first kept as "NAME (before Music Keeper).xml", numbered if there is one. Needs memory for a
/// piece of the file only. One thread, that of the store.
class LibraryExport {
 public:
  explicit LibraryExport(LibraryStore &from) : store(from) {}

  /// The file beside the store.
  QString usualPath() const;
  /// Empty, or one line that says what went wrong; the old file then stands. Does not throw.
  [[nodiscard]] QString run(const QString &path);
  [[nodiscard]] QString run() { return run(usualPath()); }
  /// True if the file beside the store is that of an export after which nothing has changed.
  bool isCurrent();

 private:
  void write(const QString &path);
  void writeTracks(LibraryXmlWriter &xml);
  void writePlaylists(LibraryXmlWriter &xml);
  void writeItems(LibraryXmlWriter &xml, qint64 playlist);
  void writeRoot(LibraryXmlWriter &xml);
  /// Notes what the file looks like, so that the next export knows it for ours.
  void remember(const QString &temporary);
  bool isOurs(const QString &path);

  LibraryStore &store;
};
