#include "platform/qt/TerminationSignals.h"

#include <sys/socket.h>
#include <unistd.h>

#include <csignal>

namespace {

constexpr int kSignals[] = {SIGTERM, SIGINT, SIGHUP};
// A handler may do little more than write to what the main loop watches.
volatile std::sig_atomic_t wakeSocket = -1;

void handler(int) {
  const char byte = 1;
  if (wakeSocket >= 0 && ::write(wakeSocket, &byte, 1) < 0) return;
}

}  // namespace

TerminationSignals::TerminationSignals(std::function<void()> terminate) {
  if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, sockets) != 0) return;
  wakeSocket = sockets[0];
  notifier = std::make_unique<QSocketNotifier>(sockets[1], QSocketNotifier::Read);
  QObject::connect(notifier.get(), &QSocketNotifier::activated, notifier.get(),
                   [this, run = std::move(terminate)] {
                     char bytes[16];
                     while (::read(sockets[1], bytes, sizeof bytes) > 0) {
                     }
                     run();
                   });
  for (const int signal : kSignals) std::signal(signal, handler);
}

TerminationSignals::~TerminationSignals() {
  if (!notifier) return;
  for (const int signal : kSignals) std::signal(signal, SIG_DFL);
  wakeSocket = -1;
  notifier.reset();
  ::close(sockets[0]);
  ::close(sockets[1]);
}
