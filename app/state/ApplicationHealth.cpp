#include "app/state/ApplicationHealth.h"

#include "app/state/AppState.h"
#include "app/state/Commands.h"
#include "app/state/LocalizedAlert.h"
#include "bridge/LocalizedMessage.h"
#include "bridge/iTunesInterface.h"
#include "platform/Platform.h"
#include "support/BMLog.h"
#include "support/Preferences.h"

namespace {
/// The system does not let this program send scripts to the application.
constexpr qint64 kNotPermitted = -1743;
}  // namespace

void ApplicationHealth::noteIfiTunesIsUnresponsiveAfterSecs(float seconds) {
  if (!iTunesInterface::haveBridge()) return;
  const double now = platform().clock->now().seconds;
  if (now - mLastResponsivenessCheck <= double(seconds)) return;
  mLastResponsivenessCheck = now;
  const bool responsive = iTunesInterface::isiTunesResponsive();
  if (prefs::isTrue(prefs::reportMinorErrors)) showWarning(!responsive);
  if (!responsive) BMLog("iTunes became unresponsive!");
}

void ApplicationHealth::setiTunesResponsive(bool responsive) {
  mLastResponsivenessCheck = platform().clock->now().seconds;
  if (prefs::isTrue(prefs::reportMinorErrors)) showWarning(!responsive);
}

void ApplicationHealth::showWarning(bool visible) {
  if (platform().mainLoop->isMainThread()) return state.view.setUnresponsiveWarningVisible(visible);
  platform().mainLoop->post([view = &state.view, visible] { view->setUnresponsiveWarningVisible(visible); });
}

void ApplicationHealth::checkForUnauthorizedAppleEvents() {
  if (iTunesInterface::lastScriptErrorNumber() != kNotPermitted || told.exchange(true)) return;
  iTunesInterface::cancelCurrentScriptExecution();
  state.operation.mCancelOperation = true;
  BMLog("!!! checkForUnauthorizedAppleEvents encountered fault, will show UI then quit.");
  platform().mainLoop->postAndWait([this] { tellAndQuit(); });
}

void ApplicationHealth::tellAndQuit() {
  const QString message = localizedMessage(QStringLiteral("UnauthorizedAppleEventsAlertInformative"));
  state.view.runAlert(localizedAlert(QStringLiteral("UnauthorizedAppleEventsAlertMessage"), message,
                                     {QStringLiteral("UnauthorizedAppleEventsAlertQuit")}, true));
  state.commands->customTerminate();
}
