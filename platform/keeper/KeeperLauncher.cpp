#include "platform/keeper/KeeperLauncher.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QProcess>

QString KeeperLauncher::standardProgram() {
  return QCoreApplication::applicationDirPath() + QStringLiteral("/tallyfen-keeper");
}

bool KeeperLauncher::canLaunch() const {
  const QFileInfo file(program);
  return file.isFile() && file.isExecutable();
}

std::unique_ptr<ProcessHandle> KeeperLauncher::launch() const {
  if (!canLaunch()) return nullptr;
  QProcess process;
  process.setProgram(program);
  // A folder of somebody's disk must not stay busy because a keeper was started from it.
  process.setWorkingDirectory(QDir::rootPath());
  process.setStandardInputFile(QProcess::nullDevice());
  process.setStandardOutputFile(QProcess::nullDevice());
  process.setStandardErrorFile(QProcess::nullDevice());
  qint64 processID = 0;
  if (!process.startDetached(&processID)) return nullptr;
  return std::make_unique<ProcessHandle>(processID);
}
