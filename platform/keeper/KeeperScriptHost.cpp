#include "platform/keeper/KeeperScriptHost.h"

#include <mutex>
#include <thread>
#include <vector>

#include "platform/keeper/KeeperLock.h"
#include "platform/keeper/KeeperProtocol.h"
#include "platform/keeper/OutcomeJson.h"

using namespace std::chrono_literals;

namespace {

// More threads than these do not speak at once for long.
constexpr size_t kMostIdle = 8;
constexpr int kMostLaunches = 2;
// How long somebody who waits to be let in may overlook that all is broken off.
constexpr auto kLook = 200ms;

ScriptFailure brokenConnection() {
  return {keeperProtocol::kConnectionInvalid, QStringLiteral("Connection is invalid."), 0, 0};
}

}  // namespace

/// The ways to a keeper.
class KeeperScriptHost::Door {
 public:
  Door(const KeeperPlace &keeperPlace, const std::optional<KeeperLauncher> &keeperLauncher)
      : place(keeperPlace), launcher(keeperLauncher) {}

  /// A connection that an earlier run has left; null if there is none.
  std::unique_ptr<KeeperConnection> kept();
  void keep(std::unique_ptr<KeeperConnection> connection);
  /// A connection to a keeper that runs, or that is started and waited for; else why there is none.
  std::unique_ptr<KeeperConnection> connected(ScriptFailure *failure);
  /// The answer over a connection; nothing if there is none, or if all are broken off meanwhile.
  std::optional<QByteArray> ask(KeeperConnection &connection, const QByteArray &request);
  void setBrokenOff(bool isBrokenOff);

 private:
  bool isBrokenOff();

  const KeeperPlace place;
  const std::optional<KeeperLauncher> launcher;
  std::mutex lock;
  // Guarded by lock.
  std::vector<std::unique_ptr<KeeperConnection>> idle;
  std::vector<KeeperConnection *> asked;
  bool brokenOff = false;
};

KeeperScriptHost::KeeperScriptHost(const KeeperPlace &place, const std::optional<KeeperLauncher> &launcher)
    : door(std::make_shared<Door>(place, launcher)) {}

KeeperScriptHost::~KeeperScriptHost() = default;

ScriptOutcome KeeperScriptHost::run(const QString &source) {
  const QByteArray request = keeperProtocol::encodeRequest(keeperProtocol::ScriptRequest{source});
  if (request.size() > keeperProtocol::kMostBytes)
    return keeperProtocol::failed(keeperProtocol::kHandlerFailed, QStringLiteral("The script is too long."));
  const std::shared_ptr<Door> way = door;
  std::unique_ptr<KeeperConnection> connection = way->kept();
  ScriptFailure failure;
  if (!connection) connection = way->connected(&failure);
  if (!connection) return {std::nullopt, failure};
  const auto answer = way->ask(*connection, request);
  const auto outcome = answer ? keeperProtocol::decodeOutcome(*answer) : std::nullopt;
  if (!outcome) return {std::nullopt, brokenConnection()};
  way->keep(std::move(connection));
  return *outcome;
}

void KeeperScriptHost::setBrokenOff(bool isBrokenOff) {
  door->setBrokenOff(isBrokenOff);
}

std::optional<QByteArray> KeeperScriptHost::Door::ask(KeeperConnection &connection,
                                                      const QByteArray &request) {
  {
    const std::lock_guard guard(lock);
    if (brokenOff) return std::nullopt;
    asked.push_back(&connection);
  }
  std::optional<QByteArray> answer = connection.ask(request);
  const std::lock_guard guard(lock);
  std::erase(asked, &connection);
  return answer;
}

void KeeperScriptHost::Door::setBrokenOff(bool isBrokenOff) {
  const std::lock_guard guard(lock);
  brokenOff = isBrokenOff;
  if (!brokenOff) return;
  for (KeeperConnection *const connection : asked) connection->breakOff();
}

bool KeeperScriptHost::Door::isBrokenOff() {
  const std::lock_guard guard(lock);
  return brokenOff;
}

std::unique_ptr<KeeperConnection> KeeperScriptHost::Door::kept() {
  const std::lock_guard guard(lock);
  while (!idle.empty()) {
    std::unique_ptr<KeeperConnection> connection = std::move(idle.back());
    idle.pop_back();
    if (connection->isUsable()) return connection;
  }
  return nullptr;
}

void KeeperScriptHost::Door::keep(std::unique_ptr<KeeperConnection> connection) {
  const std::lock_guard guard(lock);
  if (idle.size() < kMostIdle) idle.push_back(std::move(connection));
}

std::unique_ptr<KeeperConnection> KeeperScriptHost::Door::connected(ScriptFailure *failure) {
  std::unique_ptr<ProcessHandle> launched;
  for (int launches = 0;; std::this_thread::sleep_for(10ms)) {
    // Asked first: a keeper that frees its lock now has closed its socket before.
    const bool isUnderWay = KeeperLock::holder(place.lock()) || (launched && !launched->hasEnded());
    std::unique_ptr<KeeperConnection> connection = KeeperConnection::open(place, kLook, nullptr);
    if (connection) return connection;
    if (isBrokenOff()) {
      *failure = brokenConnection();
      return nullptr;
    }
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
