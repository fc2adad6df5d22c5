#pragma once

#include <csignal>

/// Notes the user's interruption while it lives, for work that goes from file to file: what is begun is
/// ended. A second interruption ends the process. One at a time, main thread.
class Interrupts {
 public:
  Interrupts();
  Interrupts(const Interrupts &) = delete;
  ~Interrupts();

  /// True once the user has interrupted.
  bool came() const;

 private:
  struct sigaction before = {};
};
