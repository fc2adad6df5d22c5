#include "platform/qt/QtFileFacts.h"

#include <sys/stat.h>

#include <QFile>

Dictionary QtFileFacts::metadata(const QString &) const {
  return {};
}

QString QtFileFacts::typeCode(const QString &) const {
  return {};
}

bool QtFileFacts::isPackage(const QString &) const {
  return false;
}

std::optional<Date> QtFileFacts::modificationDate(const QString &path) const {
  struct stat facts = {};
  if (::stat(QFile::encodeName(path).constData(), &facts) != 0) return std::nullopt;
  // From the reference date on, a double keeps a tenth of a microsecond.
  const double wholeSeconds = double(facts.st_mtim.tv_sec) - Date::kUnixOffset;
  return Date{wholeSeconds + double(facts.st_mtim.tv_nsec) * 1e-9};
}

std::optional<qint64> QtFileFacts::fileSize(const QString &path) const {
  struct stat facts = {};
  if (::stat(QFile::encodeName(path).constData(), &facts) != 0) return std::nullopt;
  return S_ISREG(facts.st_mode) ? qint64(facts.st_size) : -1;
}
