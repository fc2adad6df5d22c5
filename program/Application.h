#pragma once

#include "app/MainController.h"
#include "app/state/Commands.h"
#include "scanners/DuplicateScanner.h"

/// One application put together: the controller with its scanners, and the commands between the rooms. Made
/// behind `setPlatform`; the view outlives it. Main thread.
class Application : public Commands {
 public:
  explicit Application(ProblemView &view);
  Application(const Application &) = delete;
  /// Cancels what runs and waits for the workers.
  ~Application() override;

  MainController &controller() { return main; }
  AppState &state() { return main.appState(); }

  void doGetDefaultLibraryWhenNewerThan(std::optional<Date> date) override;
  void reloadLibraryAndScan() override;
  void doFindProblems() override;
  void setStripesForDupesFromIndex(qint32 index) override;
  void revealPreferencesTab(const QString &identifier) override;
  void customTerminate() override;

 private:
  MainController main;
  DuplicateScanner duplicateScanner;
};
