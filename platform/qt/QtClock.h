#pragma once

#include "platform/Clock.h"

/// The machine's clock.
class QtClock : public Clock {
 public:
  Date now() const override;
  void sleep(double seconds) override;
};
