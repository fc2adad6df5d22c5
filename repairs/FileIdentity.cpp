#include "repairs/FileIdentity.h"

#include <sys/stat.h>

#include <QFile>
#include <optional>

namespace fileIdentity {

namespace {

std::optional<struct stat> statusOf(const QString &path) {
  struct stat status = {};
  if (path.isEmpty() || ::stat(QFile::encodeName(path).constData(), &status) != 0) return std::nullopt;
  return status;
}

}  // namespace

bool isFile(const QString &path) {
  const std::optional<struct stat> status = statusOf(path);
  return status && S_ISREG(status->st_mode);
}

bool areSameFile(const QString &path, const QString &other) {
  if (path == other) return true;
  const std::optional<struct stat> one = statusOf(path), two = statusOf(other);
  return one && two && one->st_dev == two->st_dev && one->st_ino == two->st_ino;
}

qint64 sizeOfFile(const QString &path) {
  const std::optional<struct stat> status = statusOf(path);
  return status ? qint64(status->st_size) : 0;
}

}  // namespace fileIdentity
