#include "ctl/PrefsCommand.h"

#include <sstream>

#include "ctl/JsonWriter.h"
#include "ctl/Options.h"
#include "ctl/SettingTable.h"
#include "ctl/UserSettings.h"
#include "platform/Platform.h"
#include "support/Preferences.h"

namespace {

QStringList storedKeys() {
  return platform().preferences->keys(platform().bundle.identifier);
}

/// A known name, or any under which something is stored.
bool isKey(const QString &key) {
  return settings::isKnown(key) || storedKeys().contains(key);
}

QString unknown(const QString &key) {
  return QStringLiteral("unknown setting \"%1\"").arg(printable(key));
}

QString jsonOf(const Value &value) {
  std::ostringstream text;
  JsonWriter(text).value(value);
  return QString::fromStdString(text.str());
}

QString shown(const Value &value) {
  return value.isText() ? printable(value.toText()) : jsonOf(value);
}

int save(Terminal &terminal) {
  return userSettings::save(terminal) ? exitCode::kDone : exitCode::kReported;
}

}  // namespace

int PrefsCommand::run(const QStringList &arguments, Terminal &terminal) {
  // What follows the key is a value even when it begins with a dash.
  const QString verb = arguments.value(0);
  if (verb == QStringLiteral("set")) {
    if (arguments.size() != 3) return wrongUse(QStringLiteral("set takes a KEY and a VALUE"), terminal);
    return set(arguments[1], arguments[2], terminal);
  }
  Options options({Options::json()}, {});
  QString error;
  if (!options.parse(arguments, 2, &error)) return wrongUse(error, terminal);
  const QString key = options.operands().value(1);
  const bool hasKey = options.operands().size() == 2;
  const bool asJson = options.wantsJson();
  const QString command = options.operands().value(0);
  if (command == QStringLiteral("list") && !hasKey) return list(asJson, terminal);
  if (command == QStringLiteral("get") && hasKey) return get(key, asJson, terminal);
  if (command == QStringLiteral("unset") && hasKey) return unset(key, terminal);
  if (command == QStringLiteral("reset") && !hasKey) return reset(terminal);
  return wrongUse(QStringLiteral("say what to do with the settings"), terminal);
}

int PrefsCommand::list(bool asJson, Terminal &terminal) const {
  for (const QString &complaint : settings::complaints()) terminal.say(complaint);
  if (!asJson) {
    for (const QString &key : storedKeys())
      terminal.print(printable(key) + QStringLiteral(" = ") + shown(prefs::value(key)));
    return exitCode::kDone;
  }
  JsonWriter json(terminal.out);
  json.beginObject();
  for (const QString &key : storedKeys()) json.member(key, prefs::value(key));
  json.endObject();
  json.endLine();
  return exitCode::kDone;
}

int PrefsCommand::get(const QString &key, bool asJson, Terminal &terminal) const {
  if (!isKey(key)) return wrongUse(unknown(key), terminal);
  const Value value = prefs::value(key);
  if (value.isNull()) {
    return reported(QStringLiteral("%1 is not set").arg(key), terminal);
  }
  terminal.print(asJson ? jsonOf(value) : shown(value));
  return exitCode::kDone;
}

int PrefsCommand::set(const QString &key, const QString &text, Terminal &terminal) const {
  if (!settings::isKnown(key)) return wrongUse(unknown(key), terminal);
  QString error;
  const Value value = settings::parse(key, text, &error);
  if (value.isNull()) return wrongUse(error, terminal);
  userSettings::ensureFirstValues(terminal);
  prefs::set(key, value);
  return save(terminal);
}

int PrefsCommand::unset(const QString &key, Terminal &terminal) const {
  if (!isKey(key)) return wrongUse(unknown(key), terminal);
  prefs::remove(key);
  return save(terminal);
}

int PrefsCommand::reset(Terminal &terminal) const {
  userSettings::resetAll(terminal);
  return save(terminal);
}
