#include "app/ApplicationWatch.h"

#include "app/state/AppState.h"
#include "app/state/Commands.h"
#include "app/state/LocalizedAlert.h"
#include "app/state/Operation.h"
#include "bridge/LocalizedMessage.h"
#include "bridge/iTunesInterface.h"
#include "platform/Platform.h"
#include "support/BMLog.h"

namespace {

constexpr double kFirstCheckSeconds = 4.0;
constexpr double kGiveUpSeconds = 24.0;
constexpr double kCheckSeconds = 1.0;
/// How long the application has to answer without a failure.
constexpr double kSteadySeconds = 5.0;

double now() {
  return platform().clock->now().seconds;
}

Alert quitAlert() {
  Alert alert = localizedAlert(QStringLiteral("iTunesQuitAlertTitle"),
                               localizedMessage(QStringLiteral("iTunesQuitAlertMessage")), {});
  alert.buttons = {
      localizedMessage(QStringLiteral("iTunesQuitAlertRelaunch"), iTunesInterface::musicAppName()),
      localizedMessage(QStringLiteral("iTunesQuitAlertQuit"))};
  return alert;
}

}  // namespace

ApplicationWatch::ApplicationWatch(AppState &appState, Operation &currentOperation)
    : state(appState), operation(currentOperation) {}

ApplicationWatch::~ApplicationWatch() {
  stopObservingAppChanges();
  platform().mainLoop->stopTimer(mLaunchiTunesResponsiveCheckTimer);
}

void ApplicationWatch::startObservingAppChanges() {
  if (subscription || !iTunesInterface::haveBridge()) return;
  const auto changed = [this](const RunningApplication &application) { appChange(application.name); };
  subscription = platform().workspace->observeApplications(changed, changed);
  // What was known before has not been kept up.
  iTunesInterface::resetIsMusicAppRunning();
  iTunesInterface::isMusicAppRunning();
}

void ApplicationWatch::stopObservingAppChanges() {
  if (subscription) platform().workspace->stopObserving(subscription);
  subscription = 0;
}

void ApplicationWatch::appChange(const QString &name) {
  if (state.mIsEnding) return;
  const bool before = iTunesInterface::isMusicAppRunning();
  iTunesInterface::resetIsMusicAppRunning();
  const bool after = iTunesInterface::isMusicAppRunning();
  if (before == after) return;
  BMLog("appChange %@ running: %d -> %d", name, int(before), int(after));
  if (!before || state.mQuitAlertShown) return;
  state.mQuitAlertShown = true;
  state.operation.mCancelOperation = true;
  iTunesInterface::cancelCurrentScriptExecution();
  operation.stopTimer();
  if (!state.view.hasSheet()) {
    return state.view.beginSheet(quitAlert(), [this](int button) { iTunesLaunchSheetDidEnd(button); });
  }
  const int button = state.view.runAlert(quitAlert());
  state.mQuitAlertShown = false;
  if (state.mIsEnding) return;
  button == 0 ? launchiTunesAndScanWhenReady() : state.commands->quitNow();
}

void ApplicationWatch::iTunesLaunchSheetDidEnd(int button) {
  constexpr double kDelaySeconds = 0.5;
  state.mQuitAlertShown = false;
  state.operation.mCancelOperation = true;
  later(kDelaySeconds,
        [this, button] { button == 0 ? launchiTunesAndScanWhenReady() : state.commands->customTerminate(); });
}

void ApplicationWatch::later(double seconds, MainLoop::Task task) {
  platform().mainLoop->stopTimer(mLaunchiTunesResponsiveCheckTimer);
  mLaunchiTunesResponsiveCheckTimer = platform().mainLoop->startTimer(seconds, false, std::move(task));
}

void ApplicationWatch::launchiTunesAndScanWhenReady() {
  if (state.mIsEnding) return;
  state.mLaunchGivenUp = false;
  ProblemView &view = state.view;
  view.setProgressIndeterminate(true);
  view.setProgressText(localizedMessage(QStringLiteral("WaitiTunesMessage")));
  view.setProgressQuote(
      localizedMessage(QStringLiteral("QuoteWaitiTunesMessage"), iTunesInterface::musicAppName()));
  view.setProgressSubText({});
  view.setCancelEnabled(false);
  operation.progressSheet().displayProgressSheet();
  if (!platform().workspace->launchApplication(iTunesInterface::musicAppIdentifier()))
    BMLog("!!! %@ cannot be launched", iTunesInterface::musicAppName());
  mLaunchiTunesLastUnresponsiveTime = now() + kFirstCheckSeconds;
  mLaunchiTunesGiveUpTime = now() + kGiveUpSeconds;
  later(kFirstCheckSeconds, [this] { launchiTunesCheckIfResponsive(); });
}

void ApplicationWatch::launchiTunesCheckIfResponsive() {
  mLaunchiTunesResponsiveCheckTimer = 0;
  if (state.mIsEnding) return;
  if (now() > mLaunchiTunesGiveUpTime) {
    BMLog("!!! Gave up waiting for iTunes to become responsive");
    state.mLaunchGivenUp = true;
  } else if (now() - mLaunchiTunesLastUnresponsiveTime > kSteadySeconds) {
    state.health.setiTunesResponsive(true);
    if (!state.mVersionLogged)
      BMLog("iTunes Version: %@", iTunesInterface::versionString().value_or(QString()));
    state.mVersionLogged = true;
  } else {
    if (!iTunesInterface::isiTunesResponsive()) mLaunchiTunesLastUnresponsiveTime = now();
    return later(kCheckSeconds, [this] { launchiTunesCheckIfResponsive(); });
  }
  state.view.setCancelEnabled(true);
  state.view.showProblemWindow();
  state.commands->scanLibraryForProblems();
}
