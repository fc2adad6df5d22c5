#pragma once

#include <QString>
#include <QStringList>

/// The library's own file, as opposed to what it exports: where it may lie, and which one is in use.
struct LibraryFileSearch {
  /// Looks by the usual names in the folder of the media, the folder that holds that, and the user's music
  /// folder. An empty path stands for no media folder. Any thread.
  explicit LibraryFileSearch(const QString &mediaPath);

  /// The files found, in the order of the search.
  QStringList candidates;
  /// The one modified last, within the last two days and not more than two hours from now; null if none was.
  QString mostRecent;
};
