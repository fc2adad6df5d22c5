#include "platform/qt/QtWorkspace.h"

#include <QFileInfo>
#include <QSysInfo>

QString QtWorkspace::displayNameOfApplication(const QString &path) const {
  const QFileInfo info(path);
  const bool isApplication = info.isFile() ? info.isExecutable() : info.isDir();
  return isApplication ? info.completeBaseName() : QString();
}

QString QtWorkspace::systemDescription() const {
  return QSysInfo::prettyProductName() + u" ("_qs + QSysInfo::kernelType() + u' ' +
         QSysInfo::kernelVersion() + u", "_qs + QSysInfo::currentCpuArchitecture() + u')';
}
