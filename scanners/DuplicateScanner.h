#pragma once

#include <QSet>
#include <QString>
#include <functional>

struct AppState;

/// Finds groups of tracks that are copies of one another: each group is a seed, the first of its tracks in the
/// library's order, with every later track that passes all tests against it.
class DuplicateScanner {
 public:
  /// Given a persistent ID, all that the user declared not to be duplicates of it. Called on the scan's thread.
  using IgnoredDuplicates = std::function<QSet<QString>(const QString &pid)>;

  explicit DuplicateScanner(AppState &appState) : state(appState) {}

  void setIgnoredDuplicates(IgnoredDuplicates source) { ignoredDuplicatesForPID = std::move(source); }

  /// The body of the scan's thread. Works on its own copy of the sorted tracks; appends complete groups to
  /// `mDuplicateSongDicts`, row by row under its lock, and ends by setting `mCompletedOperation`. Stops between
  /// seeds when cancelled; the groups found so far stay. Never throws.
  void scanLibraryForDuplicatesThread();

 private:
  AppState &state;
  IgnoredDuplicates ignoredDuplicatesForPID;
};
