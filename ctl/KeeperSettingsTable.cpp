#include "ctl/KeeperSettingsTable.h"

#include "ctl/Command.h"
#include "platform/Platform.h"
#include "platform/keeper/KeeperFolder.h"

namespace keepersettings {

namespace {

constexpr std::pair<QStringView, bool> kSettings[] = {
    {u"organise", false}, {u"copyToMediaFolder", false}, {u"exportXML", true}};

bool valueOf(const QString &key, bool byDefault) {
  const Value value = platform().preferences->value(keeperFolder::kDomain, key);
  return value.type() == Value::Type::Boolean ? value.toBool() : byDefault;
}

}  // namespace

int show(const QString &key, Terminal &terminal) {
  bool isKnown = false;
  for (const auto &[name, byDefault] : kSettings) {
    if (!key.isEmpty() && key != name) continue;
    isKnown = true;
    const QString value =
        valueOf(name.toString(), byDefault) ? QStringLiteral("true") : QStringLiteral("false");
    terminal.print(key.isEmpty() ? name.toString() + QStringLiteral(" = ") + value : value);
  }
  if (isKnown) return exitcode::kDone;
  terminal.say(QStringLiteral("Music Keeper has no setting \"%1\"").arg(printable(key)));
  return exitcode::kWrongUse;
}

int change(const QString &key, const QString &text, Terminal &terminal) {
  const bool isYes = text == u"true" || text == u"yes", isNo = text == u"false" || text == u"no";
  for (const auto &[name, byDefault] : kSettings) {
    if (key != name) continue;
    if (!isYes && !isNo) {
      terminal.say(QStringLiteral("%1 is true or false").arg(key));
      return exitcode::kWrongUse;
    }
    platform().preferences->setValue(keeperFolder::kDomain, key, Value(isYes));
    QString error;
    if (platform().preferences->synchronize(&error)) return exitcode::kDone;
    terminal.say(QStringLiteral("the settings were not saved: ") + error);
    return exitcode::kReported;
  }
  return show(key, terminal);
}

}  // namespace keepersettings
