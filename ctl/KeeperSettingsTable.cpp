#include "ctl/KeeperSettingsTable.h"

#include "ctl/Command.h"
#include "ctl/UserSettings.h"
#include "platform/KeeperIdentity.h"
#include "platform/Platform.h"
#include "platform/keeper/KeeperSettings.h"

namespace keeperSettings {

int show(const QString &key, Terminal &terminal) {
  bool isKnown = false;
  const KeeperSettings settings = KeeperSettings::read();
  for (const auto &[name, setting] : kKeeperSettings) {
    if (!key.isEmpty() && key != name) continue;
    isKnown = true;
    const QString value = settings.*setting ? QStringLiteral("true") : QStringLiteral("false");
    terminal.print(key.isEmpty() ? name.toString() + QStringLiteral(" = ") + value : value);
  }
  if (isKnown) return exitCode::kDone;
  terminal.say(QStringLiteral("Music Keeper has no setting \"%1\"").arg(printable(key)));
  return exitCode::kWrongUse;
}

int change(const QString &key, const QString &text, Terminal &terminal) {
  const bool isYes = text == u"true" || text == u"yes", isNo = text == u"false" || text == u"no";
  for (const auto &[name, setting] : kKeeperSettings) {
    if (key != name) continue;
    if (!isYes && !isNo) {
      terminal.say(QStringLiteral("%1 is true or false").arg(key));
      return exitCode::kWrongUse;
    }
    platform().preferences->setValue(keeperIdentity::kIdentifier, key, Value(isYes));
    return userSettings::save(terminal) ? exitCode::kDone : exitCode::kReported;
  }
  return show(key, terminal);
}

}  // namespace keeperSettings
