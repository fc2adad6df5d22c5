#include "platform/WriteAll.h"

#include <unistd.h>

#include <cerrno>

bool writeAll(int handle, QByteArrayView bytes, qsizetype *written) {
  qsizetype done = 0;
  while (done < bytes.size()) {
    const ssize_t count = ::write(handle, bytes.data() + done, size_t(bytes.size() - done));
    if (count < 0 && errno == EINTR) continue;
    // A file that takes nothing and gives no reason never will.
    if (count == 0) errno = EIO;
    if (count <= 0) break;
    done += count;
  }
  if (written) *written = done;
  return done == bytes.size();
}
