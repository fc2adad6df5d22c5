#include "bridge/iTunesResponseCheck.h"

#include "bridge/ApplicationScripts.h"
#include "bridge/BridgeState.h"
#include "platform/Platform.h"

void iTunesResponseCheck::threadediTunesScriptExecution(const QString &source) {
  {
    const std::lock_guard guard(lock);
    mResult.reset();
  }
  ScriptOutcome outcome;
  {
    const std::lock_guard guard(bridgeState().timedScripts);
    // Gone where the thread that waited here was left behind at the end of all.
    if (ScriptHost *const host = platform().scriptHost) outcome = host->run(source);
  }
  if (outcome.failure) outcome.result.reset();
  if (!outcome.failure && !outcome.result) return;
  const std::lock_guard guard(lock);
  mResult = std::move(outcome);
}

std::optional<ScriptOutcome> iTunesResponseCheck::resultDescriptor() const {
  const std::lock_guard guard(lock);
  return mResult;
}

void iTunesResponseCheck::threadediTunesResponseCheck() {
  const std::optional<QString> version = iTunesInterface::versionString();
  bridgeState().responseState = version && !version->isEmpty() ? 1 : -1;
}
