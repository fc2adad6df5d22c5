#pragma once

#include <QHash>
#include <QString>
#include <vector>

/// The paths that several tracks of the library name: a file goes only with the last of them. One thread.
class SharedPaths {
 public:
  /// `paths`: one for each track.
  explicit SharedPaths(const std::vector<QString> &paths);

  /// True if more tracks name the path than these.
  bool isNamedByMoreThan(const QString &path, int tracks) const;
  /// A track that named it has left the library.
  void trackIsGone(const QString &path);

 private:
  /// Only paths with two tracks or more.
  QHash<QString, int> counts;
};
