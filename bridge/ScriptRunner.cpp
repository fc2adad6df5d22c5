#include "bridge/ScriptRunner.h"

#include <QScopeGuard>
#include <algorithm>
#include <memory>

#include "bridge/BridgeState.h"
#include "bridge/MusicApplication.h"
#include "bridge/iTunesResponseCheck.h"
#include "platform/Platform.h"
#include "support/BMLog.h"
#include "values/Keys.h"

namespace iTunesInterface {

namespace {

/// The longest rest between two looks for an answer. The first is short, as most answers come at once and a
/// merge asks twice for each group.
constexpr double kPollSeconds = 0.1;
constexpr double kFirstPollSeconds = 0.005;
constexpr qint64 kScriptError = -1753;

QString forThisApplication(const QString &source) {
  const QString name = musicAppName();
  if (name == u"iTunes") return source;
  return QString(source).replace(QStringLiteral("\"iTunes\""), u'"' + name + u'"');
}

Dictionary errorDictionary(const ScriptFailure &failure) {
  Dictionary made = Dictionary::make();
  if (failure.number) made.set(keys::scriptErrorNumber, Value(*failure.number));
  if (!failure.message.isEmpty()) made.set(keys::scriptErrorMessage, failure.message);
  if (failure.rangeLength > 0) {
    made.set(keys::scriptErrorRange,
             QStringLiteral("{%1, %2}").arg(failure.rangeStart).arg(failure.rangeLength));
  }
  return made;
}

ScriptOutcome runUntimed(const QString &source) {
  BridgeState &state = bridgeState();
  const std::lock_guard making(state.untimedScripts);
  const std::lock_guard executing(state.untimedScripts);
  // A thread that was left behind may have waited here beyond the end of what it was for.
  ScriptHost *const host = platform().scriptHost;
  if (!host) return {};
  state.untimedScriptRuns = true;
  const auto ended = qScopeGuard([&state] { state.untimedScriptRuns = false; });
  ScriptOutcome outcome = host->run(source);
  if (outcome.failure) outcome.result.reset();
  return outcome;
}

/// What the script came to in time; neither result nor failure if it did not.
ScriptOutcome runTimed(const QString &source, double timeout) {
  BridgeState &state = bridgeState();
  const Clock &clock = *platform().clock;
  const double deadline = clock.now().seconds + timeout;
  const auto check = std::make_shared<iTunesResponseCheck>();
  state.abandoned.detach(QStringLiteral("threadediTunesScriptExecution"),
                         [check, source] { check->threadediTunesScriptExecution(source); });
  if (!state.cancelRequest) {
    double rest = kFirstPollSeconds;
    while (!check->resultDescriptor() && deadline > clock.now().seconds) {
      platform().clock->sleep(rest);
      if (state.cancelRequest) break;
      rest = std::min(2 * rest, kPollSeconds);
    }
  }
  // A thread that is still at it keeps the check for itself from here on.
  return check->resultDescriptor().value_or(ScriptOutcome());
}

void reportNothing(const ScriptOutcome &outcome, double timeout, const QString &source) {
  const Dictionary error = outcome.failure ? errorDictionary(*outcome.failure) : Dictionary();
  BMLog("!!! descFromScript nil (%.1f) [%@] from script \"%@\"", timeout, error, source);
  bridgeState().lastScriptErrorNumber =
      outcome.failure ? outcome.failure->number.value_or(kScriptError) : kScriptError;
}

void reportTimedFailure(const ScriptFailure &failure, double timeout, const QString &source) {
  BMLog("!!! descFromScript %@ (%.1f) [%@] from script \"%@\"", errorDictionary(failure), timeout,
        Dictionary(), source);
  bridgeState().lastScriptErrorNumber = failure.number.value_or(kScriptError);
  if (failure.rangeLength > 0) {
    BMLog(" ... offending code: [\"%@\"]", source.mid(failure.rangeStart, failure.rangeLength));
  }
}

}  // namespace

std::optional<ScriptDescriptor> descFromScriptTimeoutSeconds(const QString &text, float timeout) {
  if (!haveBridge()) return std::nullopt;
  const QString source = forThisApplication(text);
  const bool isTimed = timeout > 0;
  const ScriptOutcome outcome = isTimed ? runTimed(source, double(timeout)) : runUntimed(source);
  if (!haveBridge()) return std::nullopt;
  BridgeState &state = bridgeState();
  state.lastScriptErrorNumber = 0;
  if (state.cancelRequest) {
    BMLog("!!! descFromScript cancelled script \"%@\"", source);
    state.cancelRequest = false;
    return outcome.result;
  }
  if (outcome.result) return outcome.result;
  if (isTimed && outcome.failure) {
    reportTimedFailure(*outcome.failure, double(timeout), source);
  } else {
    reportNothing(outcome, double(timeout), source);
  }
  return std::nullopt;
}

std::optional<QString> stringFromScript(const QString &source) {
  const std::optional<ScriptDescriptor> result = descFromScriptTimeoutSeconds(source, 0);
  return result ? result->stringValue() : std::nullopt;
}

qint32 intFromScript(const QString &source) {
  const std::optional<ScriptDescriptor> result = descFromScriptTimeoutSeconds(source, 0);
  return result ? result->int32Value() : -1;
}

void cancelCurrentScriptExecution() {
  bridgeState().cancelRequest = true;
}

bool isLocked() {
  return bridgeState().untimedScriptRuns;
}

qint64 lastScriptErrorNumber() {
  return bridgeState().lastScriptErrorNumber;
}

}  // namespace iTunesInterface
