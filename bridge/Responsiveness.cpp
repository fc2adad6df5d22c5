#include "bridge/Responsiveness.h"

#include <memory>

#include "bridge/BridgeState.h"
#include "bridge/MusicApplication.h"
#include "bridge/iTunesResponseCheck.h"
#include "platform/Platform.h"
#include "support/RunningApplications.h"

namespace iTunesInterface {

namespace {

constexpr double kProbeSeconds = 8.0, kPollSeconds = 0.25;
constexpr int kInFlight = 0, kYes = 1;

}  // namespace

bool isiTunesResponsive() {
  BridgeState &shared = bridgeState();
  std::atomic<int> &state = shared.responseState;
  if (state == kInFlight) return false;
  state = kInFlight;
  const auto check = std::make_shared<iTunesResponseCheck>();
  // Without a thread nobody would ever end the question.
  if (!shared.abandoned.detach(QStringLiteral("threadediTunesResponseCheck"),
                               [check] { check->threadediTunesResponseCheck(); }))
    state = BridgeState::kUnknown;
  Clock &clock = *platform().clock;
  const double begin = clock.now().seconds;
  while (state == kInFlight && clock.now().seconds - begin < kProbeSeconds) clock.sleep(kPollSeconds);
  return state == kYes;
}

bool isMusicAppRunning() {
  if (!haveBridge()) return true;
  std::atomic<int> &state = bridgeState().runningState;
  if (state != BridgeState::kUnknown) return state == kYes;
  int answer = BMUtility::isApplicationRunningWithIdentifier(musicAppIdentifier());
  // The first question is always answered; the older one stands behind it for systems where it is not.
  if (answer == BridgeState::kUnknown) answer = BMUtility::isApplicationRunning(musicAppName());
  state = answer;
  return answer == kYes;
}

void resetIsMusicAppRunning() {
  bridgeState().runningState = BridgeState::kUnknown;
}

void reset() {
  BridgeState &state = bridgeState();
  state.runningState = BridgeState::kUnknown;
  state.responseState = BridgeState::kUnknown;
}

}  // namespace iTunesInterface
