#pragma once

#include "values/Date.h"

/// Time as the system sees it. Any thread.
class Clock {
 public:
  virtual ~Clock() = default;
  /// The present moment; may jump when the user sets the machine's clock.
  virtual Date now() const = 0;
  /// Lets the calling thread rest. Negative durations are none.
  virtual void sleep(double seconds) = 0;
};
