#include "platform/keeper/KeeperLock.h"

#include <fcntl.h>
#include <unistd.h>

#include <QByteArray>
#include <QFile>
#include <cerrno>
#include <cstring>

namespace {

// A lock that belongs to the open file, not to the process, is not lost when the file is closed elsewhere.
#ifdef F_OFD_SETLK
constexpr int kSetLock = F_OFD_SETLK, kGetLock = F_OFD_GETLK;
#else
constexpr int kSetLock = F_SETLK, kGetLock = F_GETLK;
#endif

struct flock wholeFile() {
  struct flock lock = {};
  lock.l_type = F_WRLCK;
  lock.l_whence = SEEK_SET;
  return lock;
}

}  // namespace

KeeperLock::~KeeperLock() {
  // The file stays: a lock on a name that may be removed is none.
  if (handle >= 0) ::close(handle);
}

KeeperLock::Taken KeeperLock::take(QString *error) {
  handle = ::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
  struct flock lock = wholeFile();
  if (handle >= 0 && ::fcntl(handle, kSetLock, &lock) == 0) {
    const QByteArray number = QByteArray::number(qint64(::getpid())) + '\n';
    if (::ftruncate(handle, 0) == 0 && ::pwrite(handle, number.constData(), size_t(number.size()), 0) > 0)
      return Taken::Yes;
  }
  const int reason = errno;
  if (handle >= 0) ::close(handle);
  handle = -1;
  if (reason == EAGAIN) return Taken::HeldByOther;
  if (error)
    *error = QStringLiteral("cannot lock %1: %2").arg(path, QString::fromLocal8Bit(std::strerror(reason)));
  return Taken::Failed;
}

std::optional<qint64> KeeperLock::holder(const QString &path) {
  const int file = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
  if (file < 0) return std::nullopt;
  struct flock lock = wholeFile();
  const bool held = ::fcntl(file, kGetLock, &lock) == 0 && lock.l_type != F_UNLCK;
  char digits[24] = {};
  const ssize_t read = held ? ::pread(file, digits, sizeof digits - 1, 0) : 0;
  ::close(file);
  if (!held) return std::nullopt;
  return read > 0 ? QByteArray(digits).trimmed().toLongLong() : 0;
}
