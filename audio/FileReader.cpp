#include "audio/FileReader.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>

QByteArray FileReader::read(qint64 offset, qint64 length) const {
  if (held.descriptor < 0 || offset < 0 || offset >= held.size || length <= 0) return {};
  QByteArray bytes(std::min(length, held.size - offset), Qt::Uninitialized);
  bytes.truncate(readInto(offset, bytes.data(), bytes.size()));
  return bytes;
}

qint64 FileReader::readInto(qint64 offset, char *into, qint64 length) const {
  if (held.descriptor < 0 || offset < 0 || offset >= held.size) return 0;
  const qint64 wanted = std::min(length, held.size - offset);
  qint64 done = 0;
  while (done < wanted) {
    const ssize_t count = ::pread(held.descriptor, into + done, size_t(wanted - done), off_t(offset + done));
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) break;  // an error, or the file has shrunk
    done += count;
  }
  return done;
}
