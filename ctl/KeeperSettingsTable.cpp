#include "ctl/KeeperSettingsTable.h"

#include "ctl/Command.h"
#include "platform/KeeperIdentity.h"
#include "platform/Platform.h"
#include "platform/keeper/KeeperSettings.h"

namespace keepersettings {

int show(const QString &key, Terminal &terminal) {
  bool isKnown = false;
  const KeeperSettings settings = KeeperSettings::read();
  for (const auto &[name, setting] : kKeeperSettings) {
    if (!key.isEmpty() && key != name) continue;
    isKnown = true;
    const QString value = settings.*setting ? QStringLiteral("true") : QStringLiteral("false");
    terminal.print(key.isEmpty() ? name.toString() + QStringLiteral(" = ") + value : value);
  }
  if (isKnown) return exitcode::kDone;
  terminal.say(QStringLiteral("Music Keeper has no setting \"%1\"").arg(printable(key)));
  return exitcode::kWrongUse;
}

int change(const QString &key, const QString &text, Terminal &terminal) {
  const bool isYes = text == u"true" || text == u"yes", isNo = text == u"false" || text == u"no";
  for (const auto &[name, setting] : kKeeperSettings) {
    if (key != name) continue;
    if (!isYes && !isNo) {
      terminal.say(QStringLiteral("%1 is true or false").arg(key));
      return exitcode::kWrongUse;
    }
    platform().preferences->setValue(keeperIdentity::kIdentifier, key, Value(isYes));
    QString error;
    if (platform().preferences->synchronize(&error)) return exitcode::kDone;
    terminal.say(QStringLiteral("the settings were not saved: ") + error);
    return exitcode::kReported;
  }
  return show(key, terminal);
}

}  // namespace keepersettings
