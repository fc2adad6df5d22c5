#include "audio/RegularFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <system_error>

bool RegularFile::open(const QString &path, Access access) {
  close();
  const int mode = access == Access::Read ? O_RDONLY : O_RDWR;
  // Without O_NONBLOCK the opening of a pipe would wait for its other end.
  const int opened = ::open(QFile::encodeName(path).constData(), mode | O_CLOEXEC | O_NONBLOCK);
  if (opened < 0) return false;
  struct stat facts = {};
  if (::fstat(opened, &facts) != 0 || !S_ISREG(facts.st_mode)) {
    ::close(opened);
    return false;
  }
  descriptor = opened;
  size = facts.st_size;
  return true;
}

void RegularFile::close() {
  if (descriptor >= 0) ::close(descriptor);
  descriptor = -1;
  size = 0;
}

QString RegularFile::lineOfError(int error) {
  return QString::fromStdString(std::system_category().message(error));
}
