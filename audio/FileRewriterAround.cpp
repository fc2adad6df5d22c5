// A new head and a new tail around audio that must not be lost, in the file itself.

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "audio/FileRewriter.h"

namespace {

/// Audio that moves up by less goes by way of a place so much higher: a piece written must never cover what
/// has no copy yet, and pieces of a few bytes would take forever.
constexpr qint64 kSmallestStep = 256 * 1024;

bool readWhole(int descriptor, qint64 offset, qint64 length, QByteArray &bytes) {
  bytes.resize(length);
  for (qint64 done = 0; done < length;) {
    const ssize_t count =
        ::pread(descriptor, bytes.data() + done, size_t(length - done), off_t(offset + done));
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    done += count;
  }
  return true;
}

}  // namespace

QString FileRewriter::replaceAround(QByteArrayView head, qint64 start, qint64 length, QByteArrayView tail) {
  const qint64 shift = head.size() - start;
  const qint64 step = shift > 0 ? std::max(shift, std::min(kSmallestStep, length)) : 0;
  const qint64 newSize = head.size() + length + tail.size();
  OldBytes old;
  if (!readOldBytes(start, length, shift != 0, old)) return RegularFile::lineOfError(EIO);
  const qint64 largest = std::max(newSize, start + step + length + tail.size());
  QString failure = makeRoom(largest, tail);
  if (!failure.isNull()) return failure;
  if (step > 0) failure = writeFromEnd(start + step, old.audio, step);
  if (failure.isNull()) failure = writeAt(0, head);
  // Down to its place, front first: what is overwritten has been copied. A step of the whole way is there.
  if (failure.isNull() && shift != step) failure = writeAt(head.size(), old.audio);
  if (failure.isNull()) failure = writeAt(newSize - tail.size(), tail);
  if (failure.isNull() && ::ftruncate(held.descriptor, off_t(newSize)) != 0)
    failure = RegularFile::lineOfError(errno);
  if (failure.isNull()) {
    held.size = newSize;
  } else {
    putBack(old, start, length);
  }
  return failure;
}

bool FileRewriter::readOldBytes(qint64 start, qint64 length, bool withAudio, OldBytes &old) const {
  const qint64 end = start + length;
  if (start < 0 || length < 0 || end > held.size) return false;
  return readWhole(held.descriptor, 0, start, old.head) &&
         readWhole(held.descriptor, end, held.size - end, old.tail) &&
         (!withAudio || readWhole(held.descriptor, start, length, old.audio));
}

QString FileRewriter::makeRoom(qint64 size, QByteArrayView tail) {
  if (size <= held.size) return {};
  // The tail first: at whatever size the file is found, it ends with it.
  QString failure = size - tail.size() < held.size ? QString() : writeAt(size - tail.size(), tail);
  if (failure.isNull()) {
    const int refused = ::posix_fallocate(held.descriptor, off_t(held.size), off_t(size - held.size));
    if (refused == 0 || refused == EOPNOTSUPP || refused == EINVAL) return {};
    failure = RegularFile::lineOfError(refused);
  }
  // Part of the room may have been given; the file must not keep it as a tail of zeros.
  return ::ftruncate(held.descriptor, off_t(held.size)) != 0 ? RegularFile::lineOfError(errno) : failure;
}

QString FileRewriter::writeFromEnd(qint64 offset, QByteArrayView bytes, qint64 chunk) {
  for (qint64 end = bytes.size(); end > 0;) {
    const qint64 begin = std::max<qint64>(0, end - chunk);
    const QString failure = writeAt(offset + begin, bytes.sliced(begin, end - begin));
    if (!failure.isNull()) return failure;
    end = begin;
  }
  return {};
}

void FileRewriter::putBack(const OldBytes &old, qint64 start, qint64 length) {
  // The room for these bytes was the file's before: no step needs a new one.
  if (!writeAt(start, old.audio).isNull() || !writeAt(0, old.head).isNull()) return;
  if (!writeAt(start + length, old.tail).isNull()) return;
  [[maybe_unused]] const int cut = ::ftruncate(held.descriptor, off_t(held.size));
}
