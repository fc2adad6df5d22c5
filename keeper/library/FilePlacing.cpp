#include "keeper/library/FilePlacing.h"

#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>
#include <cerrno>
#include <cstring>

#include "support/Paths.h"

namespace {

using filePlacing::Outcome;

QString systemError() {
  return QString::fromLocal8Bit(std::strerror(errno));
}

Outcome failed(const QString &name, const QString &why, QString *error) {
  *error = u"%1: %2"_qs.arg(name, why);
  return Outcome::Failed;
}

/// Gives a finished copy its name. A disk without second names gets the name reserved first.
Outcome giveName(const QByteArray &temporary, const QString &name, QString *error) {
  const QByteArray target = QFile::encodeName(name);
  if (::link(temporary.constData(), target.constData()) == 0) return Outcome::Placed;
  if (errno == EEXIST) return Outcome::Taken;
  QFile reserved(name);
  if (!reserved.open(QIODevice::WriteOnly | QIODevice::NewOnly)) {
    return QFileInfo::exists(name) ? Outcome::Taken : failed(name, reserved.errorString(), error);
  }
  if (::rename(temporary.constData(), target.constData()) == 0) return Outcome::Placed;
  const QString why = systemError();
  reserved.remove();
  return failed(name, why, error);
}

/// Copies the bytes and the date, down to the disk.
bool copyBytes(QFile &from, QFile &to) {
  constexpr qint64 kBlock = 1 << 18;
  QByteArray block(kBlock, Qt::Uninitialized);
  for (qint64 count = 0; (count = from.read(block.data(), kBlock)) != 0;) {
    if (count < 0 || to.write(block.constData(), count) != count) return false;
  }
  struct stat status = {};
  if (!to.flush() || ::fstat(from.handle(), &status) != 0) return false;
  const timespec times[] = {status.st_atim, status.st_mtim};
  return ::fchmod(to.handle(), status.st_mode & 0777) == 0 && ::futimens(to.handle(), times) == 0 &&
         ::fsync(to.handle()) == 0;
}

}  // namespace

namespace filePlacing {

Outcome copy(const QString &file, const QString &name, QString *error) {
  const QString folder = QFileInfo(name).path();
  if (!createMissingDirectories(folder)) return failed(folder, u"the folder cannot be made"_qs, error);
  if (QFileInfo(name).isSymLink() || QFileInfo::exists(name)) return Outcome::Taken;
  QFile from(file);
  if (!from.open(QIODevice::ReadOnly)) return failed(file, from.errorString(), error);
  // Removes itself, whatever happens.
  QTemporaryFile to(folder + u"/.adding-XXXXXX"_qs);
  if (!to.open()) return failed(folder, to.errorString(), error);
  if (!copyBytes(from, to)) {
    const bool isReading = from.error() != QFileDevice::NoError;
    return failed(isReading ? file : name, isReading ? from.errorString() : to.errorString(), error);
  }
  return giveName(QFile::encodeName(to.fileName()), name, error);
}

Outcome addName(const QString &file, const QString &name, QString *error) {
  const QString folder = QFileInfo(name).path();
  if (!createMissingDirectories(folder)) return failed(folder, u"the folder cannot be made"_qs, error);
  if (::link(QFile::encodeName(file).constData(), QFile::encodeName(name).constData()) == 0)
    return Outcome::Placed;
  return errno == EEXIST ? Outcome::Taken : copy(file, name, error);
}

bool isSameFile(const QString &a, const QString &b) {
  struct stat first = {}, second = {};
  return ::stat(QFile::encodeName(a).constData(), &first) == 0 &&
         ::stat(QFile::encodeName(b).constData(), &second) == 0 && first.st_dev == second.st_dev &&
         first.st_ino == second.st_ino;
}

void removeEmptyFolders(const QString &folder, const QString &top) {
  for (QString at = folder; at.startsWith(top + u'/'); at = QFileInfo(at).path()) {
    // Fails where anything is left inside.
    if (::rmdir(QFile::encodeName(at).constData()) != 0) return;
  }
}

}  // namespace filePlacing
