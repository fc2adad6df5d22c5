#include "platform/AtomicFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "platform/FolderEntry.h"
#include "platform/WriteAll.h"

namespace {

bool fail(const QString &path, const char *step, QString *error) {
  const int reason = errno;
  if (error) {
    *error = QStringLiteral("cannot write %1 (%2): %3")
                 .arg(path, QString::fromLatin1(step), QString::fromUtf8(std::strerror(reason)));
  }
  return false;
}

/// The file that a path's links lead to, whether it exists yet or not; null for links that run in a circle.
QString linkTarget(QString path) {
  for (int links = 0; links < 40; ++links) {
    const QFileInfo info(path);
    if (!info.isSymLink()) return path;
    path = info.symLinkTarget();
  }
  return {};
}

/// Fills and closes the file; the name of the step that failed, or null.
const char *fill(int handle, const QString &target, QByteArrayView bytes, bool durable) {
  struct stat old = {};
  const bool exists = ::stat(QFile::encodeName(target).constData(), &old) == 0;
  const char *failed = nullptr;
  if (!writeAll(handle, bytes)) failed = "writing";
  if (!failed && exists && ::fchmod(handle, old.st_mode & 07777) != 0) failed = "permissions";
  if (!failed && durable && ::fsync(handle) != 0) failed = "reaching the disk";
  const int reason = errno;
  const bool closed = ::close(handle) == 0;
  if (failed) errno = reason;
  return !failed && !closed ? "closing" : failed;
}

}  // namespace

bool writeFileAtomically(const QString &path, QByteArrayView bytes, bool durable, QString *error) {
  const QString target = linkTarget(path);
  if (target.isNull()) {
    errno = ELOOP;
    return fail(path, "following links", error);
  }
  const QString folder = QFileInfo(target).path();
  const QByteArray temporary =
      QFile::encodeName(folder + u"/."_qs + QFileInfo(target).fileName() + u'.' +
                        QString::number(QRandomGenerator::system()->generate64(), 36));
  const int handle = ::open(temporary.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  if (handle < 0) return fail(path, "making a temporary file", error);
  const char *failed = fill(handle, target, bytes, durable);
  if (!failed && std::rename(temporary.constData(), QFile::encodeName(target).constData()) != 0) {
    failed = "renaming";
  }
  if (failed) {
    const int reason = errno;
    ::unlink(temporary.constData());
    errno = reason;
    return fail(path, failed, error);
  }
  if (durable && !folderEntry::syncFolder(QFile::encodeName(folder)))
    return fail(path, "bringing the folder to the disk", error);
  return true;
}
