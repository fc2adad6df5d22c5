#include "platform/keeper/KeeperPlace.h"

#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <cerrno>
#include <cstring>

namespace {

bool fail(QString *error, const QString &folder, const QString &reason) {
  if (error) *error = QStringLiteral("the folder %1 cannot be used: %2").arg(folder, reason);
  return false;
}

}  // namespace

KeeperPlace KeeperPlace::ofUser(const QString &temporaryFolder) {
  const QString runtime = QFile::decodeName(qgetenv("XDG_RUNTIME_DIR"));
  if (QDir::isAbsolutePath(runtime)) return {QDir::cleanPath(runtime) + QStringLiteral("/tallyfen")};
  return {QStringLiteral("%1/tallyfen-%2").arg(temporaryFolder).arg(::geteuid())};
}

bool KeeperPlace::isSafe(QString *error) const {
  struct stat facts = {};
  if (::lstat(QFile::encodeName(folder).constData(), &facts) != 0)
    return fail(error, folder, QString::fromLocal8Bit(std::strerror(errno)));
  if (!S_ISDIR(facts.st_mode)) return fail(error, folder, QStringLiteral("it is no folder"));
  if (facts.st_uid != ::geteuid()) return fail(error, folder, QStringLiteral("it belongs to another user"));
  if ((facts.st_mode & 077) != 0) return fail(error, folder, QStringLiteral("others can enter it"));
  return true;
}

bool KeeperPlace::prepare(QString *error) const {
  const QByteArray name = QFile::encodeName(folder);
  QDir().mkpath(QDir(folder).filePath(QStringLiteral("..")));
  if (::mkdir(name.constData(), 0700) != 0 && errno != EEXIST)
    return fail(error, folder, QString::fromLocal8Bit(std::strerror(errno)));
  struct stat facts = {};
  const bool isOwn =
      ::lstat(name.constData(), &facts) == 0 && S_ISDIR(facts.st_mode) && facts.st_uid == ::geteuid();
  if (isOwn && (facts.st_mode & 077) != 0 && ::chmod(name.constData(), 0700) != 0)
    return fail(error, folder, QString::fromLocal8Bit(std::strerror(errno)));
  return isSafe(error);
}
