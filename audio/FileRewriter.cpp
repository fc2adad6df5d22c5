#include "audio/FileRewriter.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace {

constexpr qint64 kChunk = 256 * 1024;

}  // namespace

QString FileRewriter::writeAt(qint64 offset, QByteArrayView bytes) {
  for (qint64 done = 0; done < bytes.size();) {
    const QByteArrayView rest = bytes.sliced(done);
    const ssize_t count = ::pwrite(held.descriptor, rest.data(), size_t(rest.size()), off_t(offset + done));
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return RegularFile::lineOfError(count < 0 ? errno : EIO);
    done += count;
  }
  return {};
}

QString FileRewriter::writeFront(QByteArrayView bytes) {
  return writeAt(0, bytes);
}

QString FileRewriter::replaceAll(QByteArrayView bytes) {
  const qint64 growth = bytes.size() - held.size;
  if (growth <= 0) {
    const QString failure = writeAt(0, bytes);
    if (!failure.isNull()) return failure;
    return growth < 0 && ::ftruncate(held.descriptor, off_t(bytes.size())) != 0
               ? RegularFile::lineOfError(errno)
               : QString();
  }
  const int refused = ::posix_fallocate(held.descriptor, off_t(held.size), off_t(growth));
  if (refused != 0 && refused != EOPNOTSUPP && refused != EINVAL) {
    // Part of the room may have been given; the file must not keep it as a tail of zeros.
    if (::ftruncate(held.descriptor, off_t(held.size)) != 0) return RegularFile::lineOfError(errno);
    return RegularFile::lineOfError(refused);
  }
  // Chunks no longer than the growth never overwrite what has no copy yet.
  const qint64 chunk = std::clamp<qint64>(growth, 4096, kChunk);
  for (qint64 end = bytes.size(); end > 0;) {
    const qint64 begin = std::max<qint64>(0, end - chunk);
    const QString failure = writeAt(begin, bytes.sliced(begin, end - begin));
    if (!failure.isNull()) return failure;
    end = begin;
  }
  held.size = bytes.size();
  return {};
}
