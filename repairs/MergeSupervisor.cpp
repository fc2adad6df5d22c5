#include "repairs/MergeSupervisor.h"

#include <cstdlib>

#include "app/ApplicationWatch.h"
#include "app/state/AppState.h"
#include "app/state/Commands.h"
#include "app/state/LocalizedAlert.h"
#include "app/state/Operation.h"
#include "bridge/BridgeState.h"
#include "bridge/LocalizedMessage.h"
#include "bridge/iTunesInterface.h"
#include "platform/Platform.h"
#include "repairs/MergeAction.h"
#include "repairs/MergeReasons.h"
#include "repairs/MergeSettings.h"
#include "repairs/PlaylistRepair.h"
#include "repairs/SavedState.h"
#include "repairs/UserPlaylists.h"
#include "scanners/DuplicateGroups.h"
#include "support/BMLog.h"
#include "support/Preferences.h"
#include "support/RestServingThreads.h"
#include "values/Keys.h"

namespace {

constexpr float kStallLimitSeconds = 140.0f;
constexpr float kQuietSeconds = 20.0f;
constexpr float kQuietSecondsInPlaylists = 50.0f;
/// The music application's time to go, and to come up.
constexpr float kApplicationSeconds = 4.0F;
constexpr double kSettleSeconds = 1.0;
constexpr double kCommandDelaySeconds = 0.5;
/// A bar that stands at nothing looks broken.
constexpr double kLeastShare = 0.01;

bool isMusicAppRunningNow() {
  iTunesInterface::resetIsMusicAppRunning();
  return iTunesInterface::isMusicAppRunning();
}

}  // namespace

MergeSupervisor::~MergeSupervisor() {
  platform().mainLoop->stopTimer(mergeAgainTimer);
}

bool MergeSupervisor::isEnding() const {
  const OperationState &operation = rooms.state.operation;
  return operation.mCancelOperation || operation.mCompletedOperation;
}

void MergeSupervisor::updateMergeMarkedDuplicatesProgress() {
  AppState &state = rooms.state;
  state.health.checkForUnauthorizedAppleEvents();
  if (state.mIsEnding) return;
  noteCounting();
  if (state.operation.mNumberOfCompletedItems != state.operation.mLastCompletedCount) {
    showFinishedRows();
  } else if (const float seconds = stalledSeconds(); !isEnding() && seconds > kStallLimitSeconds) {
    if (!resolveStall(seconds)) return;
  }
  isEnding() ? endRun() : showRunning();
}

void MergeSupervisor::noteCounting() {
  // A library of any size may be counted before the first row and behind the last.
  MergeState &merge = rooms.state.merge;
  const qint64 steps = merge.countingSteps;
  if (std::exchange(lastCountingSteps, steps) == steps) return;
  merge.lastProgress = platform().clock->now();
  if (waitsSince) waitsSince = merge.lastProgress.seconds;
}

void MergeSupervisor::showFinishedRows() {
  AppState &state = rooms.state;
  state.operation.mLastCompletedCount = state.operation.mNumberOfCompletedItems;
  state.merge.lastProgress = platform().clock->now();
  state.health.setiTunesResponsive(true);
  state.commands->updateProblemNumbers();
  state.view.reloadTable(ProblemTab::Duplicates);
  state.view.restoreSelection();
}

float MergeSupervisor::stalledSeconds() const {
  return float(platform().clock->now().seconds - rooms.state.merge.lastProgress.seconds);
}

bool MergeSupervisor::resolveStall(float seconds) {
  OperationState &operation = rooms.state.operation;
  BMLog("Merge duplicates timeout (%.1f > %.1f), cancelling ...", double(seconds),
        double(kStallLimitSeconds));
  operation.mCancelOperation = true;
  iTunesInterface::cancelCurrentScriptExecution();
  restServingThreads(kSettleSeconds);
  // A thread between two steps may be stuck too, where it asks the library.
  if (operation.mCurrentThreadAction != 0 || rooms.isWorking()) {
    replaceProcess();
    return false;
  }
  startOverWithMusicApplication();
  return true;
}

void MergeSupervisor::startOverWithMusicApplication() {
  AppState &state = rooms.state;
  BMLog("... cancelled, relaunching iTunes");
  rooms.operation.abandon();
  rooms.watch.stopObservingAppChanges();
  relaunchMusicApplication();
  platform().clock->sleep(kApplicationSeconds);
  rooms.watch.startObservingAppChanges();
  state.lists.mDuplicateSongDicts = rooms.groups.duplicateSongDictsWithTopPostponed();
  // Made here, before a worker looks it up.
  state.threadLockForObject(state.lists.mDuplicateSongDicts);
  state.view.reloadTable(ProblemTab::Duplicates);
  state.operation.setCancelOperationReason({});
  state.merge.mGoesOnAfterStall = true;
}

void MergeSupervisor::replaceProcess() {
  MergeState &merge = rooms.state.merge;
  if (!rooms.saved.writeState() || !rooms.saved.prepareRelaunch()) {
    BMLog("... couldn't cancel merge, and can't relaunch");
    return quitBecause(QStringLiteral("MergeTimeout"));
  }
  BMLog("... relaunching iTunes ...");
  merge.mNumberCompletedBeforeRestart += rooms.state.operation.mNumberOfCompletedItems;
  rooms.watch.stopObservingAppChanges();
  relaunchMusicApplication();
  BMLog(".. relaunching Tallyfen with saved state");
  endProcess ? endProcess(EXIT_SUCCESS) : std::_Exit(EXIT_SUCCESS);
}

void MergeSupervisor::relaunchMusicApplication() {
  // One that still saves its library is not opened a second time, and would go in the middle of the next run.
  constexpr double kLongestEndSeconds = 6.0;
  iTunesInterface::quitMusicAppWithin(kApplicationSeconds);
  platform().clock->sleep(kApplicationSeconds);
  for (double waited = 0; waited < kLongestEndSeconds && isMusicAppRunningNow(); waited += kSettleSeconds)
    platform().clock->sleep(kSettleSeconds);
  platform().workspace->launchApplication(iTunesInterface::musicAppIdentifier());
}

void MergeSupervisor::quitBecause(const QString &keyStem) {
  const QString message = localizedMessage(keyStem + QStringLiteral("Message"));
  rooms.state.view.runAlert(localizedAlert(keyStem + QStringLiteral("Title"), message,
                                           {keyStem + QStringLiteral("AcceptButton")}, true));
  if (rooms.saved.applicationWillTerminate) rooms.saved.applicationWillTerminate();
  prefs::synchronize();
  endProcess ? endProcess(EXIT_FAILURE) : std::_Exit(EXIT_FAILURE);
}

void MergeSupervisor::showRunning() {
  AppState &state = rooms.state;
  showCurrentTitle();
  showCurrentAction();
  const double done =
      double(state.operation.mNumberOfCompletedItems) + double(state.merge.mNumberCompletedBeforeRestart);
  state.view.setProgressValue(std::max(done, rooms.operation.maximum() * kLeastShare));
  state.health.noteIfiTunesIsUnresponsiveAfterSecs(
      MergeAction(lastActionShown) == MergeAction::ReplacingInPlaylists ? kQuietSecondsInPlaylists
                                                                        : kQuietSeconds);
}

void MergeSupervisor::showCurrentTitle() {
  const QString title = rooms.state.operation.currentActionTitle();
  if (title == lastTitleShown) return;
  lastTitleShown = title;
  if (!title.isEmpty()) rooms.state.view.setProgressText(title);
}

void MergeSupervisor::showCurrentAction() {
  const qint32 action = rooms.state.operation.mCurrentThreadAction;
  if (action == lastActionShown) return;
  rooms.state.health.setiTunesResponsive(true);
  lastActionShown = action;
  if (action == 0) return;
  const QString key = QStringLiteral("MergeAction%1").arg(action);
  const QString text = localizedMessage(key);
  if (text != key) rooms.state.view.setProgressSubText(text);
}

void MergeSupervisor::endRun() {
  AppState &state = rooms.state;
  OperationState &operation = state.operation;
  if (operation.mCurrentThreadAction != 0 && !waitForStep()) return;
  if (!hasWorkerEnded()) return;
  rooms.operation.finish();
  rooms.operation.progressSheet().endProgressSheetImmediately();
  std::vector<Alert> sheets;
  const QString reason = operation.cancelOperationReason();
  if (!reason.isEmpty() && !reportReason(reason, sheets)) return;
  if (operation.mNumberOfCompletedItems != 0 && rooms.settingsOfRun().is(UnkeptPolicy::Playlist)) {
    sheets.push_back(localizedAlert(QStringLiteral("UnkeptNotDeletedTitle"),
                                    localizedMessage(QStringLiteral("UnkeptNotDeletedMessage"),
                                                     localizedMessage(QStringLiteral("UnkeptPlaylist"))),
                                    {QStringLiteral("UnkeptNotDeletedButton")}));
  }
  state.commands->updateProblemNumbers();
  state.view.validateProblemUI();
  showSheets(std::move(sheets));
}

bool MergeSupervisor::hasWorkerEnded() {
  // Longer than a thread may wait for the library between its steps. A new run beside an old thread would
  // merge the same rows twice.
  constexpr double kLongestSeconds = 60.0;
  const double now = platform().clock->now().seconds;
  if (!rooms.isWorking()) {
    waitsSince.reset();
    return true;
  }
  if (!waitsSince) {
    waitsSince = now;
    if (rooms.state.operation.mCancelOperation)
      rooms.state.view.setProgressSubText(localizedMessage(QStringLiteral("Canceling")));
  }
  if (now - *waitsSince > kLongestSeconds) {
    BMLog("Cancel merge timeout between actions");
    rooms.operation.abandon();
    quitBecause(QStringLiteral("CancelMergeTimeout"));
  }
  return false;
}

bool MergeSupervisor::waitForStep() {
  constexpr double kLongestSeconds = 10.0, kPollSeconds = 0.5;
  ProblemView &view = rooms.state.view;
  OperationState &operation = rooms.state.operation;
  view.setProgressSubText(localizedMessage(QStringLiteral("Canceling")));
  view.setProgressIndeterminate(true);
  view.setCancelEnabled(false);
  BMLog("Cancel merge wait for action:%d", operation.mCurrentThreadAction.load());
  const double begin = platform().clock->now().seconds;
  while (operation.mCurrentThreadAction != 0 && platform().clock->now().seconds - begin < kLongestSeconds) {
    operation.mCancelOperation = true;
    restServingThreads(kPollSeconds);
    // The request is used up by the script that ends next, and the worker may go from script to script.
    iTunesInterface::cancelCurrentScriptExecution();
  }
  removeTemporaryPlaylists();
  if (const qint32 action = operation.mCurrentThreadAction; action != 0) {
    BMLog("Cancel merge timeout during action:%d", action);
    rooms.operation.abandon();
    quitBecause(QStringLiteral("CancelMergeTimeout"));
    return false;
  }
  BMLog("Cancel merge successful");
  view.setProgressIndeterminate(false);
  view.setCancelEnabled(true);
  view.reloadTable(ProblemTab::Duplicates);
  view.restoreSelection();
  return true;
}

void MergeSupervisor::removeTemporaryPlaylists() {
  BMLog("Cancel merge will clean up temp playlists...");
  restServingThreads(kSettleSeconds);
  // Its script may go on for long and is not waited for, not even at the end of the process.
  bridgeState().abandoned.detach(QStringLiteral("removePlaylistsWithNamesStartingWith"), [] {
    iTunesInterface::removePlaylistsWithNamesStartingWith(UserPlaylists::tempPlaylistPrefix());
  });
}

bool MergeSupervisor::reportReason(const QString &reason, std::vector<Alert> &sheets) {
  AppState &state = rooms.state;
  BMLog("Cancel merge reason: %@", reason);
  const bool tracksAreMissing = !state.lists.mMissingSongDicts.isEmpty();
  const MergeReaction reaction = reactionToReason(reason, tracksAreMissing);
  if (reaction == MergeReaction::Retry) {
    retry(reason);
    return false;
  }
  const Dictionary brokenDetails = rooms.playListReplaceErrorDictionary(reason);
  state.merge.report.addFailure(
      failureAboutReason(reason, tracksAreMissing, state.operation.currentActionTitle(), brokenDetails));
  state.operation.setCancelOperationReason({});
  const bool isBroken = reaction == MergeReaction::BrokenPlaylist;
  if (isBroken) distrustLocations(brokenDetails);
  const Alert alert =
      isBroken ? alertAboutBrokenPlaylist(brokenDetails) : alertAboutReason(reason, tracksAreMissing);
  if (reaction != MergeReaction::TrashFailure) {
    sheets.push_back(alert);
    return true;
  }
  state.view.beginSheet(alert,
                        [task = tasks.guarded([this] { dismissTrashFailureSheet(); })](int) { task(); });
  return false;
}

void MergeSupervisor::retry(const QString &reason) {
  AppState &state = rooms.state;
  BMLog("merge retrying %@ (%@)", reason, state.operation.currentActionTitle());
  state.operation.setCancelOperationReason({});
  state.merge.mNumberCompletedBeforeRestart += state.operation.mNumberOfCompletedItems;
  rooms.beginMergeMarkedDuplicates();
}

void MergeSupervisor::distrustLocations(const Dictionary &brokenDetails) {
  AppState &state = rooms.state;
  const Array untrusted = state.untrustedLocations.untrustedLocationPIDsArray();
  const ObjectLock lock = state.threadLockForObject(untrusted);
  const std::lock_guard held(*lock);
  QSet<QString> known;
  for (const Value &pid : untrusted) known.insert(pid.toText());
  const Array tracks = brokenDetails.value(keys::tracks).toArray();
  for (const Value &track : tracks) {
    const QString &pid = track.toDictionary().value(keys::PersistentID).toText();
    if (pid.isEmpty() || known.contains(pid)) continue;
    known.insert(pid);
    untrusted.append(pid);
  }
}

void MergeSupervisor::showSheets(std::vector<Alert> sheets) {
  if (sheets.empty()) return rooms.state.merge.mGoesOnAfterStall ? mergeAgainLater() : tellEnd();
  const Alert first = sheets.front();
  sheets.erase(sheets.begin());
  rooms.state.view.beginSheet(
      first,
      [task = tasks.guarded([this, others = std::move(sheets)] { showSheets(others); })](int) { task(); });
}

void MergeSupervisor::mergeAgainLater() {
  platform().mainLoop->stopTimer(mergeAgainTimer);
  mergeAgainTimer = platform().mainLoop->startTimer(kCommandDelaySeconds, false, [this] { mergeAgain(); });
}

void MergeSupervisor::mergeAgain() {
  const AppState &state = rooms.state;
  // The user may have been faster, with the same command or with another.
  if (state.mIsEnding || !state.merge.mGoesOnAfterStall) return;
  if (rooms.operation.isBusy() || state.mMusicLibraryBusy) return tellEnd();
  if (state.view.hasSheet()) return mergeAgainLater();
  rooms.mergeMarkedDuplicates();
}

void MergeSupervisor::tellEnd() {
  rooms.state.merge.mGoesOnAfterStall = false;
  rooms.state.view.mergeDidEnd();
}

void MergeSupervisor::dismissTrashFailureSheet() {
  tellEnd();
}
