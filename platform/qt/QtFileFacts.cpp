#include "platform/qt/QtFileFacts.h"

#include <sys/stat.h>

#include <QFile>
#include <QStorageInfo>
#include <QStringEncoder>
#include <array>

namespace {

/// The status of what a path leads to; false if there is nothing. Does without memory of its own for paths of
/// usual length, as lists of a hundred thousand files are asked about.
bool fileStatus(const QString &path, struct stat *facts) {
  std::array<char, 1024> room;
  QStringEncoder toUtf8(QStringEncoder::Utf8);
  const bool isPlain = path.size() < qsizetype(room.size()) / 3;
  if (!isPlain) return ::stat(QFile::encodeName(path).constData(), facts) == 0;
  *toUtf8.appendToBuffer(room.data(), path) = '\0';
  return ::stat(room.data(), facts) == 0;
}

}  // namespace

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
  if (!fileStatus(path, &facts)) return std::nullopt;
  // From the reference date on, a double keeps a tenth of a microsecond.
  const double wholeSeconds = double(facts.st_mtim.tv_sec) - Date::kUnixOffset;
  return Date{wholeSeconds + double(facts.st_mtim.tv_nsec) * 1e-9};
}

std::optional<qint64> QtFileFacts::fileSize(const QString &path) const {
  struct stat facts = {};
  if (!fileStatus(path, &facts)) return std::nullopt;
  return S_ISREG(facts.st_mode) ? qint64(facts.st_size) : -1;
}

qint64 QtFileFacts::freeBytes(const QString &path) const {
  return qMax<qint64>(0, QStorageInfo(path).bytesAvailable());
}
