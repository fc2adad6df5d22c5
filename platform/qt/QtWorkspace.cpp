#include "platform/qt/QtWorkspace.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QSysInfo>

#include "platform/qt/FreedesktopTrash.h"

QString QtWorkspace::displayNameOfApplication(const QString &path) const {
  const QFileInfo info(path);
  const bool isApplication = info.isFile() ? info.isExecutable() : info.isDir();
  return isApplication ? info.completeBaseName() : QString();
}

QString QtWorkspace::systemDescription() const {
  return QSysInfo::prettyProductName() + u" ("_qs + QSysInfo::kernelType() + u' ' +
         QSysInfo::kernelVersion() + u", "_qs + QSysInfo::currentCpuArchitecture() + u')';
}

QString QtWorkspace::standardTrash() {
#ifdef Q_OS_MACOS
  return {};
#else
  const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
  return data.isEmpty() ? QString() : QDir::cleanPath(data + u"/Trash"_qs);
#endif
}

bool QtWorkspace::recycle(const QString &path, QString *error) {
#ifdef Q_OS_MACOS
  QFile file(path);
  const bool done = file.moveToTrash();
  if (!done && error) *error = QStringLiteral("cannot put %1 in the trash: %2").arg(path, file.errorString());
  return done;
#else
  // The trash of Qt 6.4 knows no other disk without a trash, no link that leads nowhere, and does not end
  // where it may not write.
  return FreedesktopTrash(homeTrash).put(path, error);
#endif
}

QStringList QtWorkspace::trashFolders() const {
  return homeTrash.isEmpty() ? QStringList() : QStringList(homeTrash);
}
