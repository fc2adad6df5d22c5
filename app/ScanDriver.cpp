#include "app/ScanDriver.h"

#include <limits>

#include "app/LaunchChecks.h"
#include "app/PrefsController.h"
#include "app/library/LibraryLocation.h"
#include "app/state/AppState.h"
#include "app/state/Commands.h"
#include "app/state/LocalizedAlert.h"
#include "app/state/Operation.h"
#include "bridge/LocalizedMessage.h"
#include "platform/Platform.h"
#include "support/BMLog.h"
#include "support/Preferences.h"
#include "values/Keys.h"

namespace {

constexpr double kTickSeconds = 0.5;
/// A library file this much newer than the loaded library is another library.
constexpr float kStaleSeconds = 0.5F;

/// The two keys of a tab's count in the progress sheet.
struct CountKeys {
  ProblemTab tab;
  const char16_t *singular;
  const char16_t *plural;
};

constexpr CountKeys kCountKeys[] = {
    {ProblemTab::Duplicates, u"ProgressDupesSingular", u"ProgressDupesPlural"},
    {ProblemTab::Names, u"ProgressNamesSingular", u"ProgressNamesPlural"},
    {ProblemTab::Orphans, u"ProgressOrphanedSingular", u"ProgressOrphanedPlural"},
    {ProblemTab::Missing, u"ProgressMissingSingular", u"ProgressMissingPlural"},
};

qint32 truncated(double comparisons) {
  return qint32(qBound(0.0, comparisons, double(std::numeric_limits<qint32>::max())));
}

}  // namespace

ScanDriver::ScanDriver(AppState &appState, Operation &currentOperation, PrefsController &prefsController,
                       LaunchChecks &launchChecks)
    : state(appState), operation(currentOperation), prefsOwner(prefsController), checks(launchChecks) {}

void ScanDriver::reloadLibraryAndScan() {
  if (state.mWantsToTerminate || state.mMusicLibraryBusy || operation.isBusy()) {
    state.view.beep();
    BMLog("!!! reloadLibraryAndScan invoked while busy");
    return;
  }
  state.mLaunchGivenUp = false;
  state.commands->doGetDefaultLibraryWhenNewerThan(state.library.mLastLibraryModifiedDate);
}

void ScanDriver::doFindProblems() {
  if (!state.mMusicLibraryBusy) scanLibraryForProblems();
}

void ScanDriver::reFindProblems() {
  scanLibraryForProblems();
}

void ScanDriver::scanLibraryForProblems() {
  if (state.mIsEnding) return;
  if (operation.isBusy()) {
    state.view.beep();
    BMLog("!!! scanLibraryForProblems invoked while busy");
    return;
  }
  if (!iTunesInterface::isMusicAppRunning()) {
    BMLog("!!! scanLibraryForProblems but iTunes isn't running.");
    if (!state.mLaunchGivenUp) return state.commands->launchiTunesAndScanWhenReady();
  }
  // The load that comes first ends in a scan.
  if (state.mMusicLibraryBusy) return BMLog("!!! scanLibraryForProblems invoked during a load");
  if (!state.library.mLastLibraryDate) return state.commands->doGetDefaultLibraryWhenNewerThan(std::nullopt);
  mLibraryScanBeginTime = platform().clock->now().seconds;
  operation.reserve();
  state.locks.clearAllLocks();
  clearLists();
  if (isStale()) {
    operation.abandon();
    return state.commands->doGetDefaultLibraryWhenNewerThan(state.library.mLastLibraryModifiedDate);
  }
  state.view.setProgressIndeterminate(true);
  state.operation.mNumberOfComparisons = 0.0;
  OperationPlan plan;
  plan.text = localizedMessage(QStringLiteral("ScanningForProblems"));
  plan.quote = localizedMessage(QStringLiteral("QuoteScanningForProblems"));
  plan.maximum = maximumOfProgress();
  plan.tickSeconds = kTickSeconds;
  plan.update = [this] { updateScanLibrary(); };
  plan.beforeSheet = [this] {
    const bool phonetic = prefs::integer(prefs::inconsistentMatchMethod) == 1;
    const bool plurals = prefs::isTrue(prefs::ignorePlurals);
    state.view.setPhoneticWarningVisible(phonetic || plurals);
    BMLog("scanLibraryForProblems phonetic:%d ignorePlurals:%d", int(phonetic), int(plurals));
  };
  plan.beforeWorkers = [this] {
    launchIfGone();
    forgetEarlierScan();
  };
  plan.workers = {{QStringLiteral("scanLibraryForDuplicatesThread"), threads.scanLibraryForDuplicatesThread},
                  {QStringLiteral("scanLibraryForInconsistentNamesThread"),
                   threads.scanLibraryForInconsistentNamesThread},
                  {QStringLiteral("scanLibraryForMissingAndOrphansThread"),
                   threads.scanLibraryForMissingAndOrphansThread}};
  operation.start(plan);
}

void ScanDriver::launchIfGone() {
  if (state.mLaunchGivenUp || iTunesInterface::isMusicAppRunning()) return;
  if (!platform().workspace->launchApplication(iTunesInterface::musicAppIdentifier()))
    BMLog("!!! %@ cannot be launched", iTunesInterface::musicAppName());
}

void ScanDriver::clearLists() {
  for (const ProblemTab tab :
       {ProblemTab::Names, ProblemTab::Missing, ProblemTab::Orphans, ProblemTab::Duplicates}) {
    state.lists[tab] = Array::make();
    state.threadLockForObject(state.lists[tab]);
  }
  for (const ProblemTab tab : kProblemTabs) state.view.reloadTable(tab);
  state.operation.mNumberOfScannedPaths = 0;
}

bool ScanDriver::isStale() const {
  if (iTunesInterface::haveDirectLibraryAccess()) return false;
  const std::optional<Date> current = iTunesInterface::currentMusicLibraryDate();
  const std::optional<Date> last = state.library.mLastLibraryDate;
  const float newer = current && last ? float(current->seconds - last->seconds) : 0.0F;
  if (newer > kStaleSeconds || !last) {
    BMLog("... scan ended early, library stale (%.2f):\ncurrent lib date: %@\n   last lib date: %@",
          double(newer), current ? Value(*current) : Value(), last ? Value(*last) : Value());
    return true;
  }
  if (current) BMLog("... scan proceed with library libDiffSeconds %.2f", double(newer));
  return false;
}

double ScanDriver::maximumOfProgress() const {
  const double tracks = double(state.library.mMusicLibrarySortedTracks.size());
  const double comparisons = tracks >= 2.0 ? tracks * (tracks - 1.0) : 0.0;
  return (comparisons + 10.0 * tracks) / 1000.0;
}

void ScanDriver::forgetEarlierScan() {
  for (const Value &track : state.library.mMusicLibrarySortedTracks) {
    track.toDictionary().remove(keys::DupeGroup);
    track.toDictionary().remove(keys::RKIsArtistMatched);
    track.toDictionary().remove(keys::RKIsAlbumMatched);
  }
  noteWhatIsApplied();
}

void ScanDriver::noteWhatIsApplied() {
  state.threadLockForObject(state.library.mMusicLibrarySortedTracks);
  // It depends on the loaded library, which is the main thread's; the scan's thread then finds it fixed.
  state.ignoredDuplicates.ignoredDuplicatePIDsPrefsKey();
  prefsOwner.noteAppliedDupeValues();
  prefsOwner.noteAppliedAutomarkValues();
  prefsOwner.noteAppliedInconsistentValues();
}

void ScanDriver::updateScanLibrary() {
  state.health.checkForUnauthorizedAppleEvents();
  const OperationState &scan = state.operation;
  const bool completed = scan.mCompletedOperation && scan.mCompletedFindInconsistentNames &&
                         scan.mCompletedFindMissingAndOrphans;
  if (scan.mCancelOperation || completed) return endScan();
  const double comparisons = scan.mNumberOfComparisons;
  // The store truncates and the test does not: only a value that stands on a whole number counts as quiet.
  if (comparisons == double(lastComparisons)) {
    constexpr float kQuietSeconds = 6;
    return state.health.noteIfiTunesIsUnresponsiveAfterSecs(kQuietSeconds);
  }
  lastComparisons = truncated(comparisons);
  showScanProgress();
}

void ScanDriver::showScanProgress() {
  std::vector<ObjectLock> locks;
  for (const ProblemTab tab : kProblemTabs) {
    locks.push_back(state.threadLockForObject(state.lists[tab]));
    locks.back()->lock();
  }
  QStringList counts;
  for (const CountKeys &keys : kCountKeys) {
    const qsizetype count = state.lists[keys.tab].size();
    if (count == 1) counts.append(localizedMessage(QString::fromUtf16(keys.singular)));
    if (count > 1) counts.append(localizedMessage(QString::fromUtf16(keys.plural), count));
  }
  state.view.setProgressSubText(counts.join(QStringLiteral(", ")));
  state.view.setProgressValue(state.operation.mNumberOfComparisons);
  state.view.setProgressIndeterminate(false);
  updateProblemNumbers();
  state.commands->setStripesForDupesFromIndex(0);
  for (const ObjectLock &lock : locks) lock->unlock();
  for (const ProblemTab tab : kProblemTabs) state.view.reloadTable(tab);
}

void ScanDriver::endScan() {
  operation.finish();
  // A worker that was cancelled ends its seed first; the lists are presented once none writes them any more.
  state.workers.joinAll();
  const ProblemLists &lists = state.lists;
  BMLog("Completed scan in %.1f seconds: (%d dupe, %d incon, %d orphan, %d missing)",
        platform().clock->now().seconds - mLibraryScanBeginTime, lists.mDuplicateSongDicts.size(),
        lists.mInconsistentNameDicts.size(), lists.mOrphanSongDicts.size(), lists.mMissingSongDicts.size());
  state.mHaveScannedLibraryForProblems = true;
  operation.progressSheet().endProgressSheetImmediately();
  presentResults();
  state.view.scanDidEnd();
}

void ScanDriver::presentResults() {
  bool anyProblem = false;
  for (const ProblemTab tab : kProblemTabs) anyProblem = anyProblem || !state.lists[tab].isEmpty();
  if (!state.operation.mCancelOperation && !anyProblem) presentNoProblems();
  const QString reason = state.operation.cancelOperationReason();
  if (!reason.isEmpty()) return presentReason(reason);
  revealFoundProblems(true);
  checks.warnIfLowOnScratchSpace();
}

void ScanDriver::presentNoProblems() {
  const QString message = localizedMessage(QStringLiteral("NoProblemsMessage"));
  const Alert alert =
      localizedAlert(QStringLiteral("NoProblemsTitle"), message,
                     {QStringLiteral("NoProblemsDismiss"), QStringLiteral("NoProblemsPreferences")});
  if (state.view.runAlert(alert) != 1) return;
  platform().mainLoop->post(
      tasks.guarded([this] { prefsOwner.revealTabWithIdentifier(QStringLiteral("dupe")); }));
}

void ScanDriver::presentReason(const QString &reason) {
  const QString message =
      localizedMessage(QStringLiteral("ScanErrorMessage")) + QStringLiteral("\n\n") + reason;
  const Alert alert =
      localizedAlert(QStringLiteral("ScanErrorTitle"), message, {QStringLiteral("ScanErrorButton")}, true);
  state.view.beginSheet(alert, [](int) {});
  state.operation.setCancelOperationReason({});
}

void ScanDriver::updateProblemNumbers() {
  bool any = false;
  for (const ProblemTab tab : kProblemTabs) any = any || !state.lists[tab].isEmpty();
  for (const ProblemTab tab : kProblemTabs) {
    QString label = localizedMessage(QStringLiteral("TabTitle-") + identifierOfTab(tab));
    if (any) label += QStringLiteral(" (%1)").arg(state.lists[tab].size());
    state.view.setTabLabel(tab, label);
  }
}

void ScanDriver::revealSavedProblems() {
  noteWhatIsApplied();
  state.mHaveScannedLibraryForProblems = true;
  revealFoundProblems(false);
}

void ScanDriver::revealFoundProblems(bool afterScan) {
  state.commands->setStripesForDupesFromIndex(0);
  updateProblemNumbers();
  for (const ProblemTab tab : kProblemTabs) state.view.reloadTable(tab);
  if (afterScan && state.lists[state.view.currentTab()].isEmpty()) {
    ProblemTab first = ProblemTab::Duplicates;
    for (const ProblemTab tab : kProblemTabs) {
      if (state.lists[tab].isEmpty()) continue;
      first = tab;
      break;
    }
    state.view.selectTab(first);
  }
  // Groups of songs that differ in title or artist are left to the user's own eyes.
  const bool looseGroups = prefs::isTrue(prefs::noMatchTitle) || prefs::isTrue(prefs::noMatchArtist);
  if (afterScan && !looseGroups) state.commands->doAutomark();
  state.view.validateProblemUI();
  const bool showsDuplicates = afterScan && !state.mWantsToTerminate &&
                               state.view.currentTab() == ProblemTab::Duplicates &&
                               !state.lists.mDuplicateSongDicts.isEmpty();
  if (showsDuplicates && !prefs::isTrue(prefs::explainedDuplicates)) state.view.beginExplainDuplicatesSheet();
}
