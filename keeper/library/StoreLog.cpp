#include "keeper/library/StoreLog.h"

#include <fcntl.h>
#include <unistd.h>

#include <QFile>
#include <cerrno>
#include <cstring>

namespace storeLog {

QString flush(const QString &storePath) {
  // Opened anew each time: a log is removed and made again as stores are closed and opened. Closing it drops
  // none of the database's locks, which are on the other files.
  const QByteArray name = QFile::encodeName(storePath + QStringLiteral("-wal"));
  const int log = ::open(name.constData(), O_RDWR | O_CLOEXEC);
  // Whoever removed the log has brought all of it to the store's file first, and that to the disk.
  if (log < 0 && errno == ENOENT) return {};
  int reason = log < 0 ? errno : 0;
  while (log >= 0 && ::fdatasync(log) != 0) {
    reason = errno;
    if (reason != EINTR) break;
    reason = 0;
  }
  if (log >= 0) ::close(log);
  if (reason == 0) return {};
  return QStringLiteral("cannot bring the library %1 to the disk: %2")
      .arg(storePath, QString::fromLocal8Bit(std::strerror(reason)));
}

}  // namespace storeLog
