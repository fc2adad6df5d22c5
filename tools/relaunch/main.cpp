#include <signal.h>
#include <unistd.h>

#include <charconv>
#include <chrono>
#include <cstring>
#include <iostream>
#include <thread>

#include "tools/relaunch/DetachedStart.h"
#include "tools/relaunch/ProcessWait.h"

namespace {

constexpr int kNotStarted = 1, kWrongUse = 2;

/// The identifier in a text; 0 if it is none of a process that could have started this one.
pid_t identifierIn(const char *text) {
  const char *const end = text + std::strlen(text);
  int number = 0;
  const auto [read, problem] = std::from_chars(text, end, number);
  const bool usable = problem == std::errc() && read == end && number > 1 && number != ::getpid();
  return usable ? number : 0;
}

int wrongUse(const char *what) {
  std::cerr << "relaunch: " << what << "\nusage: relaunch APPLICATION PROCESS\n"
            << "Waits until the process with that identifier has ended, then starts the application.\n";
  return kWrongUse;
}

}  // namespace

int main(int argumentCount, char *arguments[]) {
  if (argumentCount != 3) return wrongUse("two arguments are needed");
  const std::string application = arguments[1];
  if (application.empty() || application.front() != '/')
    return wrongUse("the application's path must be whole");
  const pid_t process = identifierIn(arguments[2]);
  if (process == 0) return wrongUse("no identifier of a process");

  // The terminal or session that the old process had may go with it.
  ::signal(SIGHUP, SIG_IGN);
  ProcessWait(process).wait();
  ::signal(SIGHUP, SIG_DFL);

  // An application that is being replaced at this moment is back in a moment.
  constexpr int kAttempts = 3;
  std::string error;
  for (int attempt = 1; attempt <= kAttempts; ++attempt) {
    if (startDetached(application, &error)) return 0;
    if (attempt < kAttempts) std::this_thread::sleep_for(std::chrono::milliseconds(300));
  }
  std::cerr << "relaunch: " << application << " cannot be started: " << error << '\n';
  return kNotStarted;
}
