#include "tools/relaunch/DetachedStart.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace {

/// The new process: comes back only with an error, which goes through the pipe.
[[noreturn]] void becomeApplication(char *const arguments[], int report) {
  ::setsid();
  const int nothing = ::open("/dev/null", O_RDWR | O_CLOEXEC);
  for (int stream = 0; stream <= 2 && nothing >= 0; ++stream) ::dup2(nothing, stream);
  // A second fork: nobody has to collect the application, and it cannot get a terminal.
  const pid_t child = ::fork();
  if (child > 0) ::_exit(0);
  if (child == 0) ::execv(arguments[0], arguments);
  const int reason = errno;
  [[maybe_unused]] const ssize_t told = ::write(report, &reason, sizeof(reason));
  ::_exit(127);
}

bool fail(int reason, std::string *error) {
  *error = std::strerror(reason);
  return false;
}

}  // namespace

bool startDetached(const std::string &path, std::string *error) {
  struct stat facts = {};
  if (::stat(path.c_str(), &facts) != 0) return fail(errno, error);
  std::string opener = "/usr/bin/open";
  std::string target = path;
  char *const executable[] = {target.data(), nullptr};
  char *const bundle[] = {opener.data(), target.data(), nullptr};
  int report[2] = {-1, -1};
  if (::pipe2(report, O_CLOEXEC) != 0) return fail(errno, error);
  const pid_t child = ::fork();
  if (child == 0) becomeApplication(S_ISDIR(facts.st_mode) ? bundle : executable, report[1]);
  const int forkError = errno;
  ::close(report[1]);
  int reason = 0;
  // The pipe closes without a word when the application takes the process over.
  if (child > 0 && ::read(report[0], &reason, sizeof(reason)) != ssize_t(sizeof(reason))) reason = 0;
  ::close(report[0]);
  if (child < 0) return fail(forkError, error);
  while (::waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
  }
  return reason == 0 || fail(reason, error);
}
