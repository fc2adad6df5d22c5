#include "support/RunningApplications.h"

#include "platform/Platform.h"

namespace {

bool isAnyRunning(QString RunningApplication::*field, const QString &text) {
  if (!platform().workspace) return false;
  const std::vector<RunningApplication> running = platform().workspace->runningApplications();
  return std::any_of(running.begin(), running.end(),
                     [&](const RunningApplication &application) { return application.*field == text; });
}

}  // namespace

bool BMUtility::isApplicationRunningWithIdentifier(const QString &identifier) {
  return isAnyRunning(&RunningApplication::bundleIdentifier, identifier);
}

bool BMUtility::isApplicationRunning(const QString &name) {
  return isAnyRunning(&RunningApplication::name, name);
}
