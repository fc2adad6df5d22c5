#include "app/MainController.h"

#include <QDir>

#include "app/state/OverridePaths.h"
#include "audio/SongFileInfoCache.h"
#include "bridge/LocalizedMessage.h"
#include "bridge/iTunesInterface.h"
#include "platform/Platform.h"
#include "support/BMLog.h"
#include "support/Preferences.h"

namespace {

/// Stores what a window says of its place, if it says anything.
void storeText(const QString &key, const std::function<QString()> &source) {
  const QString text = source ? source() : QString();
  if (!text.isEmpty()) prefs::set(key, text);
}

}  // namespace

MainController::MainController(ProblemView &view)
    : state(view),
      operation(state),
      prefsOwner(state),
      loader(state, operation, prefsOwner),
      scans(state, operation, prefsOwner) {}

MainController::~MainController() {
  state.endAllWork();
  platform().mainLoop->stopTimer(reloadTimer);
}

void MainController::awakeFromNib() {
  logLaunch();
  if (!checkMusicApplication()) return customTerminate();
  prefsOwner.awakeFromNib();
  setFirstValues();
  scans.revealFoundProblems(false);
  state.view.validateProblemUI();
  state.view.selectTab(ProblemTab::Duplicates);
  state.view.showProblemWindow();
  tellIfSettingsAreNotKept();
  if (prefs::isTrue(prefs::noScanAtStartup)) {
    loader.updateLibraryPrefsDisplay();
  } else {
    loader.doGetDefaultLibraryWhenNewerThan(std::nullopt);
  }
}

void MainController::logLaunch() {
  BMLog("---- LAUNCH ----");
  const BundleInformation &bundle = platform().bundle;
  BMLog("App Version: %@ (%@ %@)", bundle.shortVersion, bundle.version, bundle.commit);
  BMLog("OS: %@", platform().workspace->systemDescription());
}

bool MainController::checkMusicApplication() {
  if (!iTunesInterface::haveBridge() || !iTunesInterface::isMusicAppRunning()) return true;
  const std::optional<QString> version = iTunesInterface::versionString();
  BMLog("Music App (\"%@\") Version: %@", iTunesInterface::musicAppName(), version.value_or(QString()));
  if (version) return true;
  Alert alert;
  alert.key = QStringLiteral("iTunesUnresponsiveTitle");
  alert.title = localizedMessage(alert.key);
  alert.message = localizedMessage(QStringLiteral("iTunesUnresponsiveMessage"));
  alert.buttons = {localizedMessage(QStringLiteral("iTunesUnresponsiveQuit"))};
  alert.critical = true;
  state.view.runAlert(alert);
  return false;
}

void MainController::setFirstValues() {
  if (prefs::value(prefs::SUEnableAutomaticChecks).isNull()) prefs::set(prefs::SUEnableAutomaticChecks, 1);
  prefs::remove(prefs::busy);
  if (prefs::isTrue(prefs::initialSetup)) return;
  prefs::set(prefs::initialSetup, true);
  prefs::set(prefs::relatedDrawer, true);
}

void MainController::tellIfSettingsAreNotKept() {
  QString reason;
  if (platform().preferences->synchronize(&reason)) return;
  BMLog("!! preferences not saved: %@", reason);
  Alert alert;
  alert.key = QStringLiteral("PrefsNotSavedTitle");
  alert.title = localizedMessage(alert.key);
  alert.message = localizedMessage(QStringLiteral("PrefsNotSavedMessage")) + QStringLiteral("\n\n") + reason;
  alert.buttons = {localizedMessage(QStringLiteral("PrefsNotSavedOK"))};
  state.view.runAlert(alert);
}

void MainController::doCancelOperation(const char *sender) {
  BMLog("doCancelOperation <%s 0x%p>", sender, static_cast<const void *>(sender));
  state.operation.mCancelOperation = true;
}

void MainController::customTerminate() {
  state.mIsEnding = true;
  state.view.endAllSheets();
  if (onTerminate) onTerminate();
}

void MainController::applicationWillTerminate() {
  if (ended) return;
  ended = true;
  storeText(prefs::prefsWindowOrigin, prefsWindowOrigin);
  storeText(prefs::problemWinFrame, problemWindowFrame);
  state.ignoredDuplicates.writeIgnoredDuplicatePIDs();
  state.untrustedLocations.writeUntrustedLocationPIDsArray();
  writeEquivOverridePathsDict(state);
  prefs::synchronize();
  SongFileInfoCache::resetSharedCache();
  BMLogFlushFinal(!state.mIsRestarting);
}

void MainController::prepareForReplacement() {
  state.mWantsToTerminate = true;
  state.operation.mCancelOperation = false;
  state.view.endAllSheets();
}

void MainController::applicationDidChangeFocus() {
  const bool inStep = state.operation.mCurrentThreadAction != 0;
  if (!inStep) state.view.rememberSelection();
  state.view.reloadTable(ProblemTab::Duplicates);
  state.view.restoreSelection();
}

void MainController::chooseNewMediaFolder() {
  QString start = prefs::text(prefs::manualMediaPath);
  if (start.isEmpty()) start = iTunesInterface::musicLibraryMostCommonParentMediaPath();
  if (start.isEmpty()) start = platform().folders.music;
  const QString chosen =
      state.view.chooseFolder(localizedMessage(QStringLiteral("ChooseMediaDirMessage")), start);
  if (chosen.isEmpty()) return;
  if (!QDir(chosen).exists()) return state.view.beep();
  prefs::set(prefs::manualMediaPath, chosen);
  state.operation.mCancelOperation = true;
  constexpr double kReloadDelaySeconds = 0.5;
  platform().mainLoop->stopTimer(reloadTimer);
  reloadTimer =
      platform().mainLoop->startTimer(kReloadDelaySeconds, false, [this] { scans.reloadLibraryAndScan(); });
}
