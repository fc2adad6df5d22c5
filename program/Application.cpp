#include "program/Application.h"

#include "scanners/DuplicateGroups.h"

Application::Application(ProblemView &view) : main(view), duplicateScanner(main.appState()) {
  main.appState().commands = this;
  ScanThreads threads;
  threads.scanLibraryForDuplicatesThread = [this] { duplicateScanner.scanLibraryForDuplicatesThread(); };
  // The names and the files have no scanner: their threads end at once and find nothing.
  threads.scanLibraryForInconsistentNamesThread = [this] {
    main.appState().operation.mCompletedFindInconsistentNames = true;
  };
  threads.scanLibraryForMissingAndOrphansThread = [this] {
    main.appState().operation.mCompletedFindMissingAndOrphans = true;
  };
  main.scanDriver().setThreads(std::move(threads));
}

Application::~Application() {
  main.appState().endAllWork();
}

void Application::doGetDefaultLibraryWhenNewerThan(std::optional<Date> date) {
  main.libraryLoader().doGetDefaultLibraryWhenNewerThan(date);
}

void Application::reloadLibraryAndScan() {
  main.scanDriver().reloadLibraryAndScan();
}

void Application::doFindProblems() {
  main.scanDriver().doFindProblems();
}

void Application::setStripesForDupesFromIndex(qint32 index) {
  ::setStripesForDupesFromIndex(main.appState(), index);
}

void Application::revealPreferencesTab(const QString &identifier) {
  main.prefsController().revealTabWithIdentifier(identifier);
}

void Application::customTerminate() {
  main.customTerminate();
}
