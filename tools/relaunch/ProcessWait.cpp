#include "tools/relaunch/ProcessWait.h"

#include <poll.h>
#include <signal.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <fstream>
#include <sstream>
#include <thread>

namespace {

/// The system's line about a process, behind its name; see proc(5), "stat". The name may hold anything.
std::istringstream factsOf(pid_t process) {
  std::ifstream file("/proc/" + std::to_string(process) + "/stat");
  std::string line;
  std::getline(file, line);
  const size_t name = line.rfind(')');
  return std::istringstream(name == std::string::npos ? std::string() : line.substr(name + 1));
}

/// The moment of the start in ticks since the machine's own; empty if the system does not tell.
std::string startOf(pid_t process) {
  std::istringstream facts = factsOf(process);
  constexpr int kFieldsBefore = 19;
  std::string field;
  for (int i = 0; i <= kFieldsBefore; ++i) {
    if (!(facts >> field)) return {};
  }
  return field;
}

bool startedLater(const std::string &one, const std::string &other) {
  if (one.empty() || other.empty()) return false;
  return one.size() != other.size() ? one.size() > other.size() : one > other;
}

/// True for a process that has ended and waits for its parent to ask about it.
bool hasEnded(pid_t process) {
  std::string condition;
  factsOf(process) >> condition;
  return condition == "Z" || condition == "X";
}

bool exists(pid_t process) {
  return ::kill(process, 0) == 0 || errno == EPERM;
}

/// -1 from a system that does not know such handles.
int openHandle(pid_t process) {
  return int(::syscall(SYS_pidfd_open, process, 0));
}

}  // namespace

ProcessWait::ProcessWait(pid_t process) : identifier(process), handle(openHandle(process)) {
  started = startOf(process);
  gone = !exists(process) || hasEnded(process) || startedLater(started, startOf(::getpid()));
}

ProcessWait::~ProcessWait() {
  if (handle >= 0) ::close(handle);
}

void ProcessWait::wait() {
  if (gone) return;
  pollfd waiting = {handle, POLLIN, 0};
  while (handle >= 0) {
    const int answer = ::poll(&waiting, 1, -1);
    if (answer > 0 && (waiting.revents & POLLIN) != 0) return;
    if (answer > 0 || errno != EINTR) break;
  }
  waitByAsking();
}

void ProcessWait::waitByAsking() const {
  using namespace std::chrono_literals;
  while (exists(identifier) && !hasEnded(identifier) && startOf(identifier) == started) {
    std::this_thread::sleep_for(100ms);
  }
}
