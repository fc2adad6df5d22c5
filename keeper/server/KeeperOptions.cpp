#include "keeper/server/KeeperOptions.h"

#include <QFileInfo>

#include "platform/keeper/KeeperProtocol.h"

QString KeeperOptions::usage() {
  return QStringLiteral(
      "usage: tallyfen-keeper [--folder DIR] [--import FILE [--map OLD=NEW]...] [--export FILE] [--once]\n"
      "  Keeps the music library and obeys the scripts that come over its socket.\n"
      "  --folder DIR    the library's folder; else that of the last time, or \"iTunes\" in the music "
      "folder\n"
      "  --import FILE   takes in a library XML in place of the present library\n"
      "  --map OLD=NEW   files named in folder OLD lie in folder NEW here\n"
      "  --export FILE   writes the library as XML\n"
      "  --once          ends after that, without serving\n"
      "Exit code: 0 done, 1 failed, 2 wrong use, 3 another one serves already.");
}

std::optional<KeeperOptions> KeeperOptions::parse(const QStringList &arguments, QString *error) {
  KeeperOptions options;
  const auto fail = [error](const QString &message) {
    *error = message;
    return std::nullopt;
  };
  for (qsizetype i = 0; i < arguments.size(); ++i) {
    const QString name = arguments[i].section(u'=', 0, 0);
    if (name == u"--once" || name == u"--help" || name == u"--version") {
      if (name != arguments[i]) return fail(QStringLiteral("%1 takes no value").arg(name));
      (name == u"--once" ? options.once : name == u"--help" ? options.help : options.version) = true;
      continue;
    }
    const bool isAssigned = arguments[i].contains(u'=');
    if (name != u"--folder" && name != u"--import" && name != u"--export" && name != u"--map")
      return fail(QStringLiteral("unknown argument %1").arg(arguments[i]));
    if (!isAssigned && i + 1 == arguments.size()) return fail(QStringLiteral("%1 needs a value").arg(name));
    const QString value = isAssigned ? arguments[i].section(u'=', 1) : arguments[++i];
    if (value.isEmpty()) return fail(QStringLiteral("%1 needs a value").arg(name));
    const QString path = QFileInfo(value).absoluteFilePath();
    if (name == u"--folder") options.folder = path;
    if (name == u"--import") options.importFile = path;
    if (name == u"--export") options.exportFile = path;
    if (name != u"--map") continue;
    const auto mapping = keeperProtocol::mappingOfText(value);
    if (!mapping) return fail(QStringLiteral("--map takes OLD=NEW"));
    options.mapping.push_back(*mapping);
  }
  if (!options.mapping.empty() && options.importFile.isEmpty())
    return fail(QStringLiteral("--map goes with --import"));
  return options;
}
