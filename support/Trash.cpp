#include "support/Trash.h"

#include <QFileInfo>

#include "platform/Platform.h"
#include "support/BMLog.h"

bool pathIsInTrash(const QString &path) {
  if (path.contains(QStringLiteral("/.Trash"))) return true;
  const QStringList folders = platform().workspace->trashFolders();
  return std::any_of(folders.begin(), folders.end(), [&path](const QString &folder) {
    return path.startsWith(folder) && (path.size() == folder.size() || path[folder.size()] == u'/');
  });
}

bool doPutInTrash(const QString &path) {
  const QFileInfo info(path);
  if (!info.exists() && !info.isSymLink()) return true;
  QString error;
  if (platform().workspace->recycle(path, &error)) return true;
  BMLog("!! doPutInTrash: %@", error);
  return false;
}
