#pragma once

#include <functional>

#include "app/state/ProblemView.h"
#include "support/TaskGuard.h"

struct AppState;
class LaunchChecks;
class Operation;
class PrefsController;

/// The bodies of the three scan threads. Each copies the sorted tracks under their lock, tests
/// `mCancelOperation` between tracks, and ends by setting its completion flag.
struct ScanThreads {
  std::function<void()> scanLibraryForDuplicatesThread;
  std::function<void()> scanLibraryForInconsistentNamesThread;
  std::function<void()> scanLibraryForMissingAndOrphansThread;
};

/// Looks through the loaded library for all four kinds of problem at once: decides whether it may be scanned,
/// starts the three threads, shows progress and presents what they found. Main thread.
class ScanDriver {
 public:
  ScanDriver(AppState &appState, Operation &currentOperation, PrefsController &prefsController,
             LaunchChecks &launchChecks);

  void setThreads(ScanThreads scanThreads) { threads = std::move(scanThreads); }

  /// Loads and scans anew, unless an operation runs.
  void reloadLibraryAndScan();
  /// Scans, unless a load is under way.
  void doFindProblems();
  /// Scans, whatever goes on.
  void reFindProblems();
  /// Starts a scan of the loaded library; a stale library is loaded again first, and a music application that
  /// does not run is launched, unless that was just given up.
  void scanLibraryForProblems();
  /// Shows the counts of the four lists on their tabs once there is any problem.
  void updateProblemNumbers();
  /// Presents the lists: stripes, numbers, tables, and with `afterScan` the first tab with rows.
  void revealFoundProblems(bool afterScan);
  /// The lists are those that a process before this one saved: presents them like a scan's, with the marks
  /// that they have.
  void revealSavedProblems();

 private:
  void launchIfGone();
  void clearLists();
  bool isStale() const;
  double maximumOfProgress() const;
  void forgetEarlierScan();
  void noteWhatIsApplied();
  void updateScanLibrary();
  void showScanProgress();
  void endScan();
  void presentResults();
  void presentNoProblems();
  void presentReason(const QString &reason);

  AppState &state;
  Operation &operation;
  PrefsController &prefsOwner;
  LaunchChecks &checks;
  ScanThreads threads;
  double mLibraryScanBeginTime = 0.0;
  /// `mNumberOfComparisons` at the last tick, truncated.
  qint32 lastComparisons = 0;
  TaskGuard tasks;
};
