#include "platform/qt/TrashFolder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDateTime>
#include <QRandomGenerator>
#include <cerrno>

#include "platform/WriteAll.h"

namespace {

constexpr mode_t kOwnerOnly = 0700;

/// Makes a folder and those above it that are missing.
bool makeFolder(const QByteArray &folder) {
  if (::mkdir(folder.constData(), kOwnerOnly) == 0 || errno == EEXIST) return true;
  const qsizetype slash = folder.lastIndexOf('/');
  if (errno != ENOENT || slash <= 0 || !makeFolder(folder.left(slash))) return false;
  return ::mkdir(folder.constData(), kOwnerOnly) == 0 || errno == EEXIST;
}

bool writeAndClose(int handle, const QByteArray &bytes) {
  const bool written = writeAll(handle, bytes);
  const int reason = errno;
  const bool closed = ::close(handle) == 0;
  if (!written) errno = reason;
  return written && closed;
}

bool bringToDisk(const QByteArray &path) {
  const int handle = ::open(path.constData(), O_RDONLY | O_CLOEXEC);
  if (handle < 0) return false;
  const bool done = ::fsync(handle) == 0;
  const int reason = errno;
  ::close(handle);
  errno = reason;
  return done;
}

/// The name for the n-th try: "Song.mp3", "Song 2.mp3" ..., and after some tries at random, so that the
/// thousandth "01 Intro.mp3" does not try a thousand. Cut where it leaves no room for ".trashinfo".
QByteArray nameForTry(const QByteArray &name, int number) {
  constexpr int kNumbered = 20, kLongest = 255 - 10;
  const qsizetype dot = name.lastIndexOf('.');
  QByteArray ending = dot > 0 && name.size() - dot <= 16 ? name.mid(dot) : QByteArray();
  QByteArray stem = name.left(name.size() - ending.size());
  if (number > kNumbered) {
    ending.prepend(' ' + QByteArray::number(QRandomGenerator::system()->generate64(), 36));
  } else if (number > 1) {
    ending.prepend(' ' + QByteArray::number(number));
  }
  qsizetype length = std::min(stem.size(), kLongest - ending.size());
  // Not in the middle of a character.
  while (length > 0 && length < stem.size() && (uchar(stem[length]) & 0xC0) == 0x80) --length;
  return stem.left(length) + ending;
}

}  // namespace

std::optional<QByteArray> TrashFolder::reserve(const QByteArray &original) const {
  constexpr int kTries = 1000;
  if (!makeFolder(filesFolder()) || !makeFolder(infoFolder())) return std::nullopt;
  for (int number = 1; number <= kTries; ++number) {
    const QByteArray name = nameForTry(original.mid(original.lastIndexOf('/') + 1), number);
    const int handle = ::open(infoOf(name).constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (handle < 0 && errno == EEXIST) continue;
    if (handle < 0) return std::nullopt;
    const bool written = writeAndClose(handle, informationOf(original));
    struct stat stale = {};
    if (written && ::lstat(fileOf(name).constData(), &stale) != 0) return name;
    release(name);
    if (!written) return std::nullopt;
  }
  errno = EEXIST;
  return std::nullopt;
}

void TrashFolder::release(const QByteArray &name) const {
  const int reason = errno;
  ::unlink(infoOf(name).constData());
  errno = reason;
}

bool TrashFolder::isOnDisk(const QByteArray &name) const {
  return bringToDisk(infoOf(name)) && bringToDisk(infoFolder()) && bringToDisk(filesFolder());
}

QByteArray TrashFolder::informationOf(const QByteArray &original) const {
  const QByteArray prefix = baseFolder.endsWith('/') ? baseFolder : baseFolder + '/';
  const bool isRelative = !baseFolder.isEmpty() && original.startsWith(prefix);
  const QByteArray told = isRelative ? original.mid(prefix.size()) : original;
  return "[Trash Info]\nPath=" + told.toPercentEncoding("/") +
         "\nDeletionDate=" + QDateTime::currentDateTime().toString(Qt::ISODate).toLatin1() + '\n';
}
