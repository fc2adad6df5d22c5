#include "support/RestServingThreads.h"

#include <algorithm>
#include <memory>

#include "platform/Platform.h"

namespace {

/// Does all that has been handed over so far.
void serveWhatIsPosted() {
  const auto isServed = std::make_shared<bool>(false);
  platform().mainLoop->post([isServed] { *isServed = true; });
  platform().mainLoop->serveUntil([&isServed] { return *isServed; });
}

}  // namespace

void restServingThreads(double seconds) {
  // A thread that was served may come again at once.
  constexpr double kStepSeconds = 0.01;
  Clock &clock = *platform().clock;
  const double end = clock.now().seconds + seconds;
  for (double left = seconds; left > 0; left = end - clock.now().seconds) {
    serveWhatIsPosted();
    clock.sleep(std::min(kStepSeconds, left));
  }
  serveWhatIsPosted();
}
