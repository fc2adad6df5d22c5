#include "ctl/Interrupts.h"

namespace {

volatile std::sig_atomic_t interrupted = 0;

void note(int) {
  interrupted = 1;
}

}  // namespace

Interrupts::Interrupts() {
  interrupted = 0;
  struct sigaction action = {};
  action.sa_handler = note;
  action.sa_flags = int(SA_RESETHAND) | SA_RESTART;
  ::sigaction(SIGINT, &action, &before);
}

Interrupts::~Interrupts() {
  ::sigaction(SIGINT, &before, nullptr);
}

bool Interrupts::came() const {
  return interrupted != 0;
}
