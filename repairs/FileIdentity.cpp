#include "repairs/FileIdentity.h"

#include <sys/stat.h>

#include <QFile>

namespace fileIdentity {

namespace {

std::optional<struct stat> statusOf(const QString &path) {
  struct stat status = {};
  if (path.isEmpty() || ::stat(QFile::encodeName(path).constData(), &status) != 0) return std::nullopt;
  return status;
}

}  // namespace

bool isFile(const QString &path) {
  return statusOfFile(path).has_value();
}

std::optional<Status> statusOfFile(const QString &path) {
  const std::optional<struct stat> status = statusOf(path);
  if (!status || !S_ISREG(status->st_mode)) return std::nullopt;
  return Status{quint64(status->st_dev), quint64(status->st_ino), qint64(status->st_size)};
}

bool areSameFile(const QString &path, const QString &other) {
  if (path == other) return true;
  const std::optional<struct stat> one = statusOf(path), two = statusOf(other);
  return one && two && one->st_dev == two->st_dev && one->st_ino == two->st_ino;
}

}  // namespace fileIdentity
