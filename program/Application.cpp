#include "program/Application.h"

Application::Application(ProblemView &view)
    : main(view),
      duplicateScanner(main.appState()),
      nameScanner(main.appState(), names),
      groups(main.appState()),
      marks(main.appState(), groups),
      playlists(main.appState(), main.currentOperation().progressSheet()),
      merge(main.appState(), main.currentOperation(), playlists),
      saved(main.appState(), groups),
      supervisor(roomsOfMerge()),
      tables(main.appState(), groups, names, PrefsController::resources()) {
  main.appState().commands = this;
  duplicateScanner.setIgnoredDuplicates(
      [this](const QString &pid) { return state().ignoredDuplicates.ignoredDuplicatesForPID(pid); });
  ScanThreads threads;
  threads.scanLibraryForDuplicatesThread = [this] { duplicateScanner.scanLibraryForDuplicatesThread(); };
  threads.scanLibraryForInconsistentNamesThread = [this] {
    // The names of the table are known by keys that follow the spelling equivalences in force.
    names.setResources(PrefsController::resources());
    nameScanner.scanLibraryForInconsistentNamesThread();
  };
  // The files have no scanner: their thread ends at once and finds nothing.
  threads.scanLibraryForMissingAndOrphansThread = [this] {
    main.appState().operation.mCompletedFindMissingAndOrphans = true;
  };
  main.scanDriver().setThreads(std::move(threads));
  merge.setSupervisor(&supervisor);
  saved.applicationWillTerminate = [this] { main.applicationWillTerminate(); };
  saved.revealAndMerge = [this] {
    main.scanDriver().revealSavedProblems();
    merge.beginMergeMarkedDuplicates();
  };
  main.isMergeToGoOn = [this] { return saved.isStateUsable(); };
}

MergeSupervisor::Rooms Application::roomsOfMerge() {
  return {main.appState(),
          main.currentOperation(),
          saved,
          groups,
          main.applicationWatch(),
          [this] { merge.mergeMarkedDuplicates(); },
          [this] { merge.beginMergeMarkedDuplicates(); },
          [this] { return merge.isWorking(); },
          [this] { return merge.settingsOfRun(); },
          [this](const QString &text) { return playlists.playListReplaceErrorDictionaryFromString(text); }};
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

void Application::scanLibraryForProblems() {
  main.scanDriver().scanLibraryForProblems();
}

void Application::launchiTunesAndScanWhenReady() {
  main.applicationWatch().launchiTunesAndScanWhenReady();
}

void Application::chooseNewMediaFolder() {
  main.chooseNewMediaFolder();
}

void Application::setStripesForDupesFromIndex(qint32 index) {
  groups.setStripesForDupesFromIndex(index);
}

void Application::doAutomark() {
  marks.doAutomark();
}

void Application::noteAppliedAutomarkValues() {
  main.prefsController().noteAppliedAutomarkValues();
}

void Application::mergeMarkedDuplicates() {
  merge.mergeMarkedDuplicates();
}

bool Application::readState() {
  return saved.readState();
}

void Application::recoverFromReadState() {
  saved.recoverFromReadState();
}

void Application::updateProblemNumbers() {
  main.scanDriver().updateProblemNumbers();
}

void Application::revealPreferencesTab(const QString &identifier) {
  main.prefsController().revealTabWithIdentifier(identifier);
}

void Application::customTerminate() {
  main.customTerminate();
}

void Application::quitNow() {
  main.quitNow();
}
