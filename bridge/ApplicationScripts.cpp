#include "bridge/ApplicationScripts.h"

#include "bridge/BridgeState.h"
#include "bridge/LibraryObject.h"
#include "bridge/MusicApplication.h"
#include "bridge/NamedScripts.h"
#include "bridge/Responsiveness.h"
#include "bridge/ScriptRunner.h"
#include "support/BMLog.h"

namespace iTunesInterface {

std::optional<QString> versionString() {
  return stringFromScript(QStringLiteral("tell app \"iTunes\"\rreturn version as string\rend tell"));
}

int iTunesMajorVersion() {
  std::atomic<int> &cached = bridgeState().majorVersion;
  if (!isMusicAppRunning() || cached > 0) return cached;
  const QString version = versionString().value_or(QString());
  const qsizetype point = version.indexOf(u'.');
  // The number that the text begins with, as far as it is one.
  int number = 0;
  for (const QChar unit : point > 0 ? version.first(point) : version) {
    if (unit < u'0' || unit > u'9') break;
    number = number * 10 + unit.digitValue();
  }
  return cached = number;
}

void writeLibraryNow() {
  if (!haveBridge()) return;
  constexpr float kTimeoutSeconds = 4;
  const std::optional<ScriptDescriptor> result = descFromScriptTimeoutSeconds(
      QStringLiteral("tell app \"iTunes\"\rtry\rsave source\rend try\rtry\rsave source 1\rend try\rend tell"),
      kTimeoutSeconds);
  const std::optional<QString> text = result ? result->stringValue() : std::nullopt;
  if (text) BMLog("%s = %@", "writeLibraryNow", *text);
  iTunesLibInterface::reloadLibrary();
}

void quitMusicAppWithin(float seconds) {
  if (!haveBridge()) return;
  // The script alone would start a closed application.
  resetIsMusicAppRunning();
  if (!isMusicAppRunning()) return;
  const std::optional<QString> script = scriptNamed(QStringLiteral("iTunes_Quit"));
  if (!script) return;
  // The request to cancel was for what ran before.
  bridgeState().cancelRequest = false;
  // With a time limit it does not wait for the untimed script that may be what hangs.
  descFromScriptTimeoutSeconds(*script, seconds);
}

}  // namespace iTunesInterface
