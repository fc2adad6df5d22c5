#include "platform/keeper/ProcessHandle.h"

#include <poll.h>
#include <signal.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>

ProcessHandle::ProcessHandle(qint64 number) : processID(number) {
#ifdef SYS_pidfd_open
  if (number > 0) handle = int(::syscall(SYS_pidfd_open, pid_t(number), 0));
#endif
}

ProcessHandle::~ProcessHandle() {
  if (handle >= 0) ::close(handle);
}

bool ProcessHandle::hasEnded() const {
  if (handle < 0) return processID <= 0 || (::kill(pid_t(processID), 0) != 0 && errno == ESRCH);
  pollfd entry{handle, POLLIN, 0};
  return ::poll(&entry, 1, 0) > 0;
}
