#include "audio/FileReader.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <algorithm>
#include <cerrno>

bool FileReader::open(const QString &path) {
  close();
  // Without O_NONBLOCK the opening of a pipe would wait for its other end.
  const int opened = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
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

void FileReader::close() {
  if (descriptor >= 0) ::close(descriptor);
  descriptor = -1;
  fileSize = 0;
}

QByteArray FileReader::read(qint64 offset, qint64 length) const {
  if (descriptor < 0 || offset < 0 || offset >= fileSize || length <= 0) return {};
  QByteArray bytes(std::min(length, fileSize - offset), Qt::Uninitialized);
  bytes.truncate(readInto(offset, bytes.data(), bytes.size()));
  return bytes;
}

qint64 FileReader::readInto(qint64 offset, char *into, qint64 length) const {
  if (descriptor < 0 || offset < 0 || offset >= fileSize) return 0;
  const qint64 wanted = std::min(length, fileSize - offset);
  qint64 done = 0;
  while (done < wanted) {
    const ssize_t count = ::pread(descriptor, into + done, size_t(wanted - done), off_t(offset + done));
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) break;  // an error, or the file has shrunk
    done += count;
  }
  return done;
}
