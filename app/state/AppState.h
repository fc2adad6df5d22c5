#pragma once

#include <QHash>
#include <QString>
#include <atomic>
#include <mutex>
#include <optional>
#include <vector>

#include "app/state/ApplicationHealth.h"
#include "app/state/IgnoredDuplicates.h"
#include "app/state/LibraryChanges.h"
#include "app/state/MergeState.h"
#include "app/state/ObjectLocks.h"
#include "app/state/ProblemView.h"
#include "app/state/UntrustedLocations.h"
#include "support/Workers.h"
#include "values/Value.h"

class Commands;

/// The loaded library. Replaced whole by each load, while `mMusicLibraryBusy` is set.
struct LibraryState {
  /// The root dictionary of the library, ignored tracks removed. Null during a load, empty after a failed
  /// one.
  Dictionary mMusicLibrary;
  /// Fresh playlists; while null, readers take "Playlists" of `mMusicLibrary`.
  Array mMusicLibraryPlaylists;
  /// The path of every kept track that has one, in the file's order.
  std::vector<QString> mMusicLibraryPaths;
  /// The kept tracks by "Artist", "Album", "Track Number". Shares its dictionaries with "Tracks"; kept during
  /// a load, replaced when one succeeds.
  Array mMusicLibrarySortedTracks;
  /// The library file's date at the last load.
  std::optional<Date> mLastLibraryDate;
  /// When this program last changed the library.
  std::optional<Date> mLastLibraryModifiedDate;
  /// From a path as the library lists it to the path where the track really is. Lives for the process only.
  QHash<QString, QString> mOverridePathsDict;
};

/// The four problem lists: rows in the order shown. Each is replaced whole; changes in place happen under its
/// `threadLockForObject` lock.
struct ProblemLists {
  Array mDuplicateSongDicts = Array::make();
  Array mInconsistentNameDicts = Array::make();
  Array mOrphanSongDicts = Array::make();
  Array mMissingSongDicts = Array::make();

  Array &operator[](ProblemTab tab);
  const Array &operator[](ProblemTab tab) const;
};

/// The one current operation: what the main thread, the workers and the progress timer tell each other.
struct OperationState {
  std::atomic<bool> mCancelOperation{false};
  /// The worker (in a scan: the duplicates thread) has finished all its work.
  std::atomic<bool> mCompletedOperation{false};
  std::atomic<bool> mCompletedFindMissingAndOrphans{false};
  std::atomic<bool> mCompletedFindInconsistentNames{false};
  /// 0, or the number of the step that a repair's worker is in.
  std::atomic<qint32> mCurrentThreadAction{0};
  std::atomic<qint32> mNumberOfCompletedItems{0};
  /// Work done by a scan, in thousandths of comparisons.
  std::atomic<double> mNumberOfComparisons{0.0};
  /// Index of the duplicate scan's seed.
  std::atomic<quint32> mNumberOfScannedPaths{0};
  /// Main thread: the value of `mNumberOfCompletedItems` at the last tick that saw a change.
  qint32 mLastCompletedCount = 0;
  /// Items on which the operation failed.
  Array mEncounteredErrors = Array::make();

  /// The text of the item being worked on. Any thread.
  void setCurrentActionTitle(const QString &title);
  QString currentActionTitle();

  /// Why the operation stopped, for the user; empty is no reason. Naming a reason also cancels. Any thread.
  void setCancelOperationReason(const QString &reason);
  QString cancelOperationReason();

 private:
  std::mutex mCurrentActionLock;
  QString mCurrentActionTitle;
  std::mutex reasonLock;
  QString mCancelOperationReason;
};

/// What every room of the application knows. Owned by `MainController`; outlives all workers.
struct AppState {
  explicit AppState(ProblemView &problemView) : view(problemView) {}
  AppState(const AppState &) = delete;

  ProblemView &view;
  /// Set once while the application is put together.
  Commands *commands = nullptr;
  LibraryState library;
  ProblemLists lists;
  OperationState operation;
  MergeState merge;
  IgnoredDuplicates ignoredDuplicates{*this};
  UntrustedLocations untrustedLocations{*this};
  LibraryChanges changes{*this};
  ApplicationHealth health{*this};
  ObjectLocks locks;
  Workers workers;

  /// A library load is under way.
  bool mMusicLibraryBusy = false;
  /// A scan has ended at least once.
  bool mHaveScannedLibraryForProblems = false;
  /// The application is being replaced; no sheet may be shown any more.
  bool mWantsToTerminate = false;
  /// The application is relaunching itself; the log is then not compressed at exit.
  bool mIsRestarting = false;
  /// The application is ending: what still comes back from a worker starts nothing and tells nothing.
  bool mIsEnding = false;

  /// The version of the music application stands in the log.
  bool mVersionLogged = false;
  /// The music application could not be brought up: no scan launches it until the user scans anew.
  bool mLaunchGivenUp = false;
  /// The alert that the music application has quit is on the screen.
  bool mQuitAlertShown = false;

  /// Cancels what runs and waits for the workers; nothing begins from here on. A music application that has
  /// not answered a worker's script within ten seconds is waited for no more: the script fails. Main thread.
  void endAllWork();

  /// The lock that guards a shared list.
  ObjectLock threadLockForObject(const Array &list) { return locks.threadLockForObject(list.identity()); }
};

/// Where the media are: the folder the user chose, else what direct access says, else what the library says,
/// else the common parent of the tracks; empty if nothing tells. Main thread.
QString musicLibraryMediaFolderWithFallbacks(const AppState &state);

/// The texts by which a tab is known: "duplicates", "names", "orphans", "missing".
QString identifierOfTab(ProblemTab tab);
