#pragma once

#include <QHash>
#include <QString>
#include <vector>

#include "values/Value.h"

/// Which files several tracks of the library have: a file goes only with the last of them. Paths through a
/// linked folder count as one. Only the names of files that the listed rows have are looked at, each folder
/// on the disk once. One thread.
class SharedPaths {
 public:
  /// `paths`: one for each track of the library; `rows`: those of the list of duplicates, of which no other
  /// thread takes any meanwhile.
  SharedPaths(const std::vector<QString> &paths, const Array &rows);

  /// True if more tracks have the file than these.
  bool isNamedByMoreThan(const QString &path, int tracks) const;
  /// A track that had the file has left the library.
  void trackIsGone(const QString &path);
  /// Takes the paths of tracks that are gone out of a list of all tracks' paths.
  void takeGoneFrom(std::vector<QString> &paths) const;

 private:
  QString canonical(const QString &path) const;

  /// What a folder's path leads to, by its text.
  mutable QHash<QString, QString> folders;
  /// Only files of two tracks or more.
  QHash<QString, int> counts;
  QHash<QString, int> gone;
};
