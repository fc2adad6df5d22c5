#include "platform/qt/QtClock.h"

#include <chrono>
#include <thread>

Date QtClock::now() const {
  const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
  return Date::fromUnix(std::chrono::duration<double>(sinceEpoch).count());
}

void QtClock::sleep(double seconds) {
  if (seconds > 0) std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
}
