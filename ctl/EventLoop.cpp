#include "ctl/EventLoop.h"

#include <fcntl.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QSocketNotifier>
#include <csignal>

namespace {

/// Where the signal handler tells the loop.
int interruptPipe[2] = {-1, -1};

void noteInterrupt(int) {
  const int before = errno;
  (void)!::write(interruptPipe[1], "!", 1);
  errno = before;
}

/// Turns the interrupt signal into a readable pipe while it lives.
class InterruptSignal {
 public:
  InterruptSignal() {
    if (::pipe2(interruptPipe, O_CLOEXEC | O_NONBLOCK) != 0) return;
    struct sigaction action = {};
    action.sa_handler = noteInterrupt;
    action.sa_flags = int(SA_RESETHAND) | SA_RESTART;
    ::sigaction(SIGINT, &action, &before);
    installed = true;
  }
  InterruptSignal(const InterruptSignal &) = delete;
  ~InterruptSignal() {
    if (!installed) return;
    ::sigaction(SIGINT, &before, nullptr);
    for (int &end : interruptPipe) end = (::close(end), -1);
  }
  int descriptor() const { return interruptPipe[0]; }

 private:
  struct sigaction before = {};
  bool installed = false;
};

}  // namespace

void runEventLoop(const std::function<bool()> &done, const std::function<void()> &onInterrupt) {
  const InterruptSignal signal;
  QSocketNotifier notifier(signal.descriptor(), QSocketNotifier::Read);
  QObject::connect(&notifier, &QSocketNotifier::activated, &notifier, [&] {
    char note = 0;
    if (::read(signal.descriptor(), &note, 1) == 1) onInterrupt();
  });
  while (!done()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}
