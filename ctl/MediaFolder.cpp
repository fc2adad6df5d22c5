#include "ctl/MediaFolder.h"

#include <QDir>
#include <QFileInfo>

#include "support/Preferences.h"

bool isMediaFolderUsable(const QString &given, Terminal &terminal) {
  if (given.isEmpty() || QFileInfo(given).isDir()) return true;
  terminal.say(QStringLiteral("the media folder \"%1\" does not exist").arg(printable(given)));
  return false;
}

void setMediaFolder(const QString &given) {
  if (!given.isEmpty()) prefs::set(prefs::manualMediaPath, QDir::cleanPath(QDir(given).absolutePath()));
}
