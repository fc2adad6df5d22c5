#include "platform/keeper/KeeperScriptHost.h"

#include <thread>

#include "platform/keeper/KeeperLock.h"
#include "platform/keeper/KeeperProtocol.h"

using namespace std::chrono_literals;

namespace {

// More threads than these do not speak at once for long.
constexpr size_t kMostIdle = 8;
constexpr int kMostLaunches = 2;

}  // namespace

KeeperScriptHost::KeeperScriptHost(KeeperPlace place_, const KeeperLauncher *launcher_)
    : place(std::move(place_)), launcher(launcher_) {}

ScriptOutcome KeeperScriptHost::run(const QString &source) {
  const QByteArray request = keeperProtocol::encodeRequest(keeperProtocol::ScriptRequest{source});
  if (request.size() > keeperProtocol::kMostBytes)
    return keeperProtocol::failed(keeperProtocol::kHandlerFailed, QStringLiteral("The script is too long."));
  std::unique_ptr<KeeperConnection> connection = kept();
  ScriptFailure failure;
  if (!connection) connection = connected(&failure);
  if (!connection) return {std::nullopt, failure};
  const auto answer = connection->ask(request);
  const auto outcome = answer ? keeperProtocol::decodeOutcome(*answer) : std::nullopt;
  if (!outcome)
    return keeperProtocol::failed(keeperProtocol::kConnectionInvalid,
                                  QStringLiteral("Connection is invalid."));
  keep(std::move(connection));
  return *outcome;
}

std::unique_ptr<KeeperConnection> KeeperScriptHost::kept() {
  const std::lock_guard guard(lock);
  while (!idle.empty()) {
    std::unique_ptr<KeeperConnection> connection = std::move(idle.back());
    idle.pop_back();
    if (connection->isUsable()) return connection;
  }
  return nullptr;
}

void KeeperScriptHost::keep(std::unique_ptr<KeeperConnection> connection) {
  const std::lock_guard guard(lock);
  if (idle.size() < kMostIdle) idle.push_back(std::move(connection));
}

std::unique_ptr<KeeperConnection> KeeperScriptHost::connected(ScriptFailure *failure) {
  std::unique_ptr<ProcessHandle> launched;
  for (int launches = 0;; std::this_thread::sleep_for(10ms)) {
    // Asked first: a keeper that frees its lock now has closed its socket before.
    const bool isUnderWay = KeeperLock::holder(place.lock()) || (launched && !launched->hasEnded());
    std::unique_ptr<KeeperConnection> connection = KeeperConnection::open(place, std::nullopt, nullptr);
    if (connection) return connection;
    // One that holds the lock and does not listen begins or ends; nothing tells when it has done so.
    if (isUnderWay) continue;
    // A launch fails where another keeper was still ending; after that it counts.
    if (launches++ == kMostLaunches) break;
    launched = launcher ? launcher->launch() : nullptr;
    if (launched) continue;
    *failure = {keeperProtocol::kNotRunning, QStringLiteral("Application isn’t running."), 0, 0};
    return nullptr;
  }
  *failure = {keeperProtocol::kCannotLaunch, QStringLiteral("The application cannot be launched."), 0, 0};
  return nullptr;
}
