#include "audio/FileRewriter.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <algorithm>
#include <cerrno>
#include <system_error>

namespace {

constexpr qint64 kChunk = 256 * 1024;

QString lineOf(int error) {
  return QString::fromStdString(std::system_category().message(error));
}

}  // namespace

bool FileRewriter::open(const QString &path) {
  close();
  const int opened = ::open(QFile::encodeName(path).constData(), O_RDWR | O_CLOEXEC | O_NONBLOCK);
  if (opened < 0) return false;
  struct stat facts = {};
  if (::fstat(opened, &facts) != 0 || !S_ISREG(facts.st_mode)) {
    ::close(opened);
    return false;
  }
  descriptor = opened;
  fileSize = facts.st_size;
  return true;
}

void FileRewriter::close() {
  if (descriptor >= 0) ::close(descriptor);
  descriptor = -1;
  fileSize = 0;
}

QString FileRewriter::writeAt(qint64 offset, QByteArrayView bytes) {
  for (qint64 done = 0; done < bytes.size();) {
    const QByteArrayView rest = bytes.sliced(done);
    const ssize_t count = ::pwrite(descriptor, rest.data(), size_t(rest.size()), off_t(offset + done));
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return lineOf(count < 0 ? errno : EIO);
    done += count;
  }
  return {};
}

QString FileRewriter::writeFront(QByteArrayView bytes) {
  return writeAt(0, bytes);
}

QString FileRewriter::replaceAll(QByteArrayView bytes) {
  const qint64 growth = bytes.size() - fileSize;
  if (growth <= 0) {
    const QString failure = writeAt(0, bytes);
    if (!failure.isNull()) return failure;
    return growth < 0 && ::ftruncate(descriptor, off_t(bytes.size())) != 0 ? lineOf(errno) : QString();
  }
  const int refused = ::posix_fallocate(descriptor, off_t(fileSize), off_t(growth));
  if (refused != 0 && refused != EOPNOTSUPP && refused != EINVAL) {
    // Part of the room may have been given; the file must not keep it as a tail of zeros.
    if (::ftruncate(descriptor, off_t(fileSize)) != 0) return lineOf(errno);
    return lineOf(refused);
  }
  // Chunks no longer than the growth never overwrite what has no copy yet.
  const qint64 chunk = std::clamp<qint64>(growth, 4096, kChunk);
  for (qint64 end = bytes.size(); end > 0;) {
    const qint64 begin = std::max<qint64>(0, end - chunk);
    const QString failure = writeAt(begin, bytes.sliced(begin, end - begin));
    if (!failure.isNull()) return failure;
    end = begin;
  }
  fileSize = bytes.size();
  return {};
}
