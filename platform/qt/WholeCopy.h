#pragma once

#include <sys/stat.h>

#include <QByteArray>
#include <vector>

/// A copy, on another file system, of a file, a link or a folder with all it holds, and the removal of what
/// was copied once the copy is known to be whole. Paths are in the file system's own bytes. One thread.
class WholeCopy {
 public:
  WholeCopy(QByteArray source, QByteArray target) : from(std::move(source)), to(std::move(target)) {}

  /// Copies bytes, permissions and times, brings all to the disk, reads it back and compares. The target must
  /// not exist yet. False if anything failed, or could not be removed later, or is neither file, link nor
  /// folder: the copy is gone again, the source untouched, and `errno` tells why.
  [[nodiscard]] bool make();

  enum class Removed { Nothing, Some, All };
  /// Removes the source, but nothing that was not copied or that has changed since: then a change seen before
  /// the first removal removes nothing. `errno` tells why it is not all.
  [[nodiscard]] Removed removeSource() const;

  /// Removes the copy again.
  void removeCopy() const;

 private:
  struct Entry {
    /// Behind both paths; empty for the first.
    QByteArray relative;
    struct stat facts;
  };
  bool copyEntry(const QByteArray &relative);
  bool copyFile(const Entry &entry) const;
  bool copyLink(const Entry &entry) const;
  bool copyFolder(const Entry &entry);
  bool isUnchanged(const Entry &entry) const;

  const QByteArray from, to;
  /// Each folder before what it holds.
  std::vector<Entry> entries;
};
