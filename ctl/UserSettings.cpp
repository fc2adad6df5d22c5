#include "ctl/UserSettings.h"

#include "app/PrefsController.h"
#include "app/state/AppState.h"
#include "ctl/TerminalView.h"
#include "platform/Platform.h"
#include "support/Preferences.h"

namespace userSettings {

void resetAll(Terminal &terminal) {
  TerminalView view(terminal);
  AppState state(view);
  PrefsController(state).resetToDefaults(false);
}

void ensureFirstValues(Terminal &terminal) {
  if (prefs::value(prefs::preferAudioFileBitRate).isNull()) resetAll(terminal);
}

bool save(Terminal &terminal) {
  QString error;
  if (platform().preferences->synchronize(&error)) return true;
  terminal.say(QStringLiteral("the settings were not saved: ") + error);
  return false;
}

}  // namespace userSettings
