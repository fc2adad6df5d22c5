#pragma once

#include <QString>

/// A reference to a file that follows it when it moves: the path with the file's device and inode. Resolving
/// looks at the path first, then for the inode in the same folder and in its neighbours, bounded.
class FileReference {
 public:
  /// A reference to what is at a path now; one that resolves to nothing if nothing is there.
  static FileReference toPath(const QString &path);

  /// Where the file is now; null if it cannot be found.
  QString resolve() const;
  bool isNull() const { return inode == 0; }

 private:
  QString path;
  quint64 device = 0;
  quint64 inode = 0;
};
