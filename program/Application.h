#pragma once

#include "app/MainController.h"
#include "app/state/Commands.h"
#include "repairs/Automark.h"
#include "repairs/MergeEngine.h"
#include "repairs/MergeSupervisor.h"
#include "repairs/PlaylistRepair.h"
#include "repairs/SavedState.h"
#include "scanners/DuplicateGroups.h"
#include "scanners/DuplicateScanner.h"
#include "scanners/InconNameController.h"
#include "scanners/InconsistentNameScanner.h"
#include "ui/ProblemTables.h"

/// One application put together: the controller with its scanners, repairs and tables, and the commands
/// between the rooms. Made behind `setPlatform`; the view outlives it. Main thread.
class Application : public Commands {
 public:
  explicit Application(ProblemView &view);
  Application(const Application &) = delete;
  /// Cancels what runs and waits for the workers.
  ~Application() override;

  MainController &controller() { return main; }
  AppState &state() { return main.appState(); }
  DuplicateGroups &duplicateGroups() { return groups; }
  Automark &automark() { return marks; }
  PlaylistRepair &playlistRepair() { return playlists; }
  MergeEngine &mergeEngine() { return merge; }
  SavedState &savedState() { return saved; }
  MergeSupervisor &mergeSupervisor() { return supervisor; }
  ProblemTables &problemTables() { return tables; }
  const InconNameController &inconNameController() const { return names; }

  void doGetDefaultLibraryWhenNewerThan(std::optional<Date> date) override;
  void reloadLibraryAndScan() override;
  void doFindProblems() override;
  void scanLibraryForProblems() override;
  void launchiTunesAndScanWhenReady() override;
  void chooseNewMediaFolder() override;
  void setStripesForDupesFromIndex(qint32 index) override;
  void doAutomark() override;
  void noteAppliedAutomarkValues() override;
  void mergeMarkedDuplicates() override;
  [[nodiscard]] bool readState() override;
  void recoverFromReadState() override;
  void updateProblemNumbers() override;
  void revealPreferencesTab(const QString &identifier) override;
  void customTerminate() override;
  void quitNow() override;

 private:
  MergeSupervisor::Rooms roomsOfMerge();

  MainController main;
  InconNameController names;
  DuplicateScanner duplicateScanner;
  InconsistentNameScanner nameScanner;
  DuplicateGroups groups;
  Automark marks;
  PlaylistRepair playlists;
  MergeEngine merge;
  SavedState saved;
  MergeSupervisor supervisor;
  ProblemTables tables;
};
