#include "app/MainController.h"

#include <QDir>

#include "app/state/LocalizedAlert.h"
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
      checks(state),
      loader(state, operation, prefsOwner, checks),
      scans(state, operation, prefsOwner, checks),
      watch(state, operation) {}

MainController::~MainController() {
  state.endAllWork();
  platform().mainLoop->stopTimer(reloadTimer);
}

void MainController::awakeFromNib() {
  logLaunch();
  if (!checkMusicApplication()) return quitNow();
  prefsOwner.awakeFromNib();
  setFirstValues();
  checks.checkForPresenceOfiTunes();
  if (state.mIsEnding) return;
  scans.revealFoundProblems(false);
  state.view.validateProblemUI();
  state.view.selectTab(ProblemTab::Duplicates);
  state.view.showProblemWindow();
  tellIfSettingsAreNotKept();
  watch.startObservingAppChanges();
  if (prefs::isTrue(prefs::noScanAtStartup) && !(isMergeToGoOn && isMergeToGoOn())) {
    loader.updateLibraryPrefsDisplay();
  } else {
    loader.doGetDefaultLibraryWhenNewerThan(std::nullopt);
  }
  loader.whenLibraryIsWhole([this] { checks.checkMediaFolder(); });
}

void MainController::logLaunch() {
  BMLog("---- LAUNCH ----");
  const BundleInformation &bundle = platform().bundle;
  BMLog("App Version: %@ (%@ %@)", bundle.shortVersion, bundle.version, bundle.commit);
  BMLog("OS: %@", platform().workspace->systemDescription());
}

bool MainController::checkMusicApplication() {
  if (!iTunesInterface::haveBridge() || !iTunesInterface::isMusicAppRunning()) return true;
  // One that takes its library in is alive, and has no time to answer.
  if (platform().workspace->libraryActivity().state == LibraryActivity::State::Importing) return true;
  // The version alone would be waited for for ever if the application hangs.
  std::optional<QString> version;
  if (iTunesInterface::isiTunesResponsive()) version = iTunesInterface::versionString();
  BMLog("Music App (\"%@\") Version: %@", iTunesInterface::musicAppName(), version.value_or(QString()));
  state.mVersionLogged = version.has_value();
  if (version) return true;
  state.view.runAlert(localizedAlert(QStringLiteral("iTunesUnresponsiveTitle"),
                                     localizedMessage(QStringLiteral("iTunesUnresponsiveMessage")),
                                     {QStringLiteral("iTunesUnresponsiveQuit")}, true));
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
  const QString message = localizedMessage(QStringLiteral("PrefsNotSavedMessage"));
  state.view.runAlert(localizedAlert(QStringLiteral("PrefsNotSavedTitle"),
                                     message + QStringLiteral("\n\n") + reason,
                                     {QStringLiteral("PrefsNotSavedOK")}));
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

void MainController::quitNow() {
  state.mIsEnding = true;
  applicationWillTerminate();
  if (onTerminate) onTerminate();
}

void MainController::applicationWillTerminate() {
  if (ended) return;
  ended = true;
  watch.stopObservingAppChanges();
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
