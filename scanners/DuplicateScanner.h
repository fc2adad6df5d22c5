#pragma once

#include <QSet>
#include <QString>
#include <functional>
#include <vector>

#include "scanners/FileMemory.h"
#include "values/Value.h"

struct AppState;

/// Finds groups of tracks that are copies of one another: each group is a seed, the first of its tracks in
/// the library's order, with every later track that passes all tests against it.
class DuplicateScanner {
 public:
  /// Given a persistent ID, all that the user declared not to be duplicates of it. Called on the scan's
  /// thread.
  using IgnoredDuplicates = std::function<QSet<QString>(const QString &pid)>;

  explicit DuplicateScanner(AppState &appState);

  void setIgnoredDuplicates(IgnoredDuplicates source) { ignoredDuplicatesForPID = std::move(source); }
  /// How files are looked for, instead of on the disk. Called on the scan's thread.
  void setFileExists(FileExists test) { fileExists = std::move(test); }

  /// The body of the scan's thread. Works on its own copy of the sorted tracks; appends complete groups to
  /// `mDuplicateSongDicts`, row by row under its lock, and ends by setting `mCompletedOperation`. Stops
  /// between seeds when cancelled; the groups found so far stay. Never throws.
  void scanLibraryForDuplicatesThread();

 private:
  void scan();
  void appendGroup(const std::vector<Dictionary> &rows, qint32 group, const Array &list);

  AppState &state;
  IgnoredDuplicates ignoredDuplicatesForPID;
  FileExists fileExists;
};
