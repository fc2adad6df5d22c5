#include "bridge/NamedScripts.h"

#include <QFile>

#include "bridge/BridgeState.h"
#include "bridge/MusicApplication.h"
#include "bridge/ScriptRunner.h"
#include "platform/Platform.h"
#include "support/BMLog.h"
#include "support/Compression.h"

namespace iTunesInterface {

namespace {

QString resourcePath(const QString &file) {
  return platform().bundle.resourceFolder + u'/' + file;
}

/// The table of the resource: empty if it cannot be understood, null if there is nothing to understand.
Dictionary readScriptTable() {
  QFile file(resourcePath(QStringLiteral("res_pack.db")));
  if (!file.open(QIODevice::ReadOnly)) return {};
  const QByteArray bytes = decompressedData(file.readAll());
  if (bytes.isEmpty()) return {};
  QString error;
  const Value root = platform().propertyLists->parse(bytes, &error);
  const bool isTable = error.isEmpty() && root.type() == Value::Type::Dictionary;
  return isTable ? root.toDictionary() : Dictionary::make();
}

Dictionary scriptTable() {
  BridgeState &state = bridgeState();
  const std::lock_guard guard(state.resources);
  if (state.scriptTable.isNull()) state.scriptTable = readScriptTable();
  return state.scriptTable;
}

QString compiledLibraryPath() {
  BridgeState &state = bridgeState();
  const std::lock_guard guard(state.resources);
  if (state.libraryPath.isNull()) {
    const QString path = resourcePath(QStringLiteral("Internal_Functions_%1.scpt").arg(musicAppName()));
    if (QFile::exists(path)) state.libraryPath = path;
  }
  return state.libraryPath;
}

}  // namespace

std::optional<QString> scriptNamed(const QString &name) {
  const Dictionary table = scriptTable();
  const Value text = table.isNull() ? Value() : table.value(Key(name));
  if (text.isText()) return text.toText();
  BMLog("!!! no scriptNamed '%@'", name);
  return std::nullopt;
}

std::optional<QString> stringFromScriptNameAndArguments(const QString &name,
                                                        std::initializer_list<FormatArgument> arguments) {
  if (!haveBridge()) return std::nullopt;
  const std::optional<QString> text = scriptNamed(name);
  return text ? stringFromScript(formatText(*text, arguments)) : std::nullopt;
}

std::optional<QString> stringFromCompiledFunctionParams(const QString &handler,
                                                        const QStringList &parameters) {
  const std::optional<ScriptDescriptor> result = descFromCompiledFunctionParams(handler, parameters);
  return result ? result->stringValue() : std::nullopt;
}

std::optional<ScriptDescriptor> descFromCompiledFunctionParams(const QString &handler,
                                                               const QStringList &parameters) {
  if (!haveBridge()) return std::nullopt;
  QStringList escaped = parameters;
  escaped.replaceInStrings(QStringLiteral("\""), QStringLiteral("\\\""));
  const QString parameterText = u'"' + escaped.join(QStringLiteral("\", \"")) + u'"';
  static const QString run = QStringList{QStringLiteral("on run"),
                                         QStringLiteral("set libPath to POSIX file \"%@\""),
                                         QStringLiteral("set TFlib to (load script file libPath)"),
                                         QStringLiteral("tell TFlib"),
                                         QStringLiteral("try"),
                                         QStringLiteral("return %@(%@)"),
                                         QStringLiteral("on error err"),
                                         QStringLiteral("return \"error: \" & err"),
                                         QStringLiteral("end try"),
                                         QStringLiteral("end tell"),
                                         QStringLiteral("end run")}
                                 .join(u'\n');
  return descFromScriptTimeoutSeconds(formatText(run, {compiledLibraryPath(), handler, parameterText}), 0);
}

}  // namespace iTunesInterface
