#include "app/state/AppState.h"

#include "app/library/LibraryLocation.h"
#include "bridge/iTunesInterface.h"
#include "platform/Platform.h"
#include "support/BMLog.h"
#include "support/Preferences.h"

Array &ProblemLists::operator[](ProblemTab tab) {
  Array *const lists[] = {&mDuplicateSongDicts, &mInconsistentNameDicts, &mOrphanSongDicts,
                          &mMissingSongDicts};
  return *lists[int(tab)];
}

const Array &ProblemLists::operator[](ProblemTab tab) const {
  return const_cast<ProblemLists &>(*this)[tab];
}

void OperationState::setCurrentActionTitle(const QString &title) {
  std::lock_guard held(mCurrentActionLock);
  mCurrentActionTitle = title;
}

QString OperationState::currentActionTitle() {
  std::lock_guard held(mCurrentActionLock);
  return mCurrentActionTitle;
}

void OperationState::setCancelOperationReason(const QString &reason) {
  std::lock_guard held(reasonLock);
  mCancelOperationReason = reason;
  if (!reason.isEmpty()) mCancelOperation = true;
}

QString OperationState::cancelOperationReason() {
  std::lock_guard held(reasonLock);
  return mCancelOperationReason;
}

void AppState::endAllWork() {
  mIsEnding = true;
  operation.mCancelOperation = true;
  constexpr double kLongestSeconds = 10;
  ScriptHost *const host = platform().scriptHost;
  if (host && !workers.waitForAll(kLongestSeconds)) {
    BMLog("!!! at the end %d threads still wait after %.0f seconds: unanswered scripts are broken off",
          workers.running(), kLongestSeconds);
    host->setBrokenOff(true);
    workers.joinAll();
    host->setBrokenOff(false);
  }
  workers.joinAll();
}

QString musicLibraryMediaFolderWithFallbacks(const AppState &state) {
  const QString manual = prefs::text(prefs::manualMediaPath);
  if (!manual.isEmpty()) return manual;
  const QString direct = iTunesInterface::musicLibraryMediaPath();
  if (!direct.isEmpty()) return direct;
  // Before the first load and during one there is no library to ask: reading it here would hold up the
  // windows.
  const Dictionary &library = state.library.mMusicLibrary;
  const QString named =
      library.isNull() ? QString() : iTunesInterface::mediaFolderPathFromDictionaryLibraryPath(library, {});
  return named.isEmpty() ? iTunesInterface::musicLibraryMostCommonParentMediaPath() : named;
}

QString identifierOfTab(ProblemTab tab) {
  static const QString identifiers[] = {QStringLiteral("duplicates"), QStringLiteral("names"),
                                        QStringLiteral("orphans"), QStringLiteral("missing")};
  return identifiers[int(tab)];
}
