#include "platform/FolderEntry.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

namespace folderEntry {

bool renameWithoutReplacing(const QByteArray &from, const QByteArray &to) {
  if (::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) == 0) return true;
  // Some file systems do not know how to refuse. In a folder of the user's own nobody else makes names.
  if (errno != EINVAL && errno != ENOSYS && errno != ENOTSUP) return false;
  struct stat facts = {};
  if (::lstat(to.constData(), &facts) == 0) {
    errno = EEXIST;
    return false;
  }
  return std::rename(from.constData(), to.constData()) == 0;
}

bool syncFolder(const QByteArray &folder) {
  const int handle = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (handle < 0) return false;
  const bool done = ::fsync(handle) == 0 || errno == EINVAL || errno == ENOTSUP;
  const int reason = errno;
  ::close(handle);
  errno = reason;
  return done;
}

}  // namespace folderEntry
