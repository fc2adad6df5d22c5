#include "ctl/KeeperProcess.h"

#include <chrono>
#include <thread>

#include "ctl/FailureText.h"
#include "ctl/ProgressBar.h"
#include "platform/Platform.h"
#include "platform/keeper/KeeperConnection.h"
#include "platform/keeper/KeeperLauncher.h"
#include "platform/keeper/KeeperLock.h"
#include "platform/keeper/KeeperProtocol.h"
#include "platform/keeper/KeeperStatus.h"
#include "platform/keeper/OutcomeJson.h"

using namespace keeperProtocol;
using namespace std::chrono_literals;

namespace {

/// How long a launched keeper may take until it answers.
constexpr auto kStartLimit = 30s;
/// How long one that is asked to quit may take until it has ended.
constexpr auto kEndLimit = 10s;

bool failedWith(const QString &message, Terminal &terminal) {
  terminal.say(message);
  return false;
}

}  // namespace

KeeperProcess::KeeperProcess() : place(KeeperPlace::ofUser(platform().folders.temporary)) {}

bool KeeperProcess::isRunning() const {
  return KeeperLock::holder(place.lock()).has_value();
}

bool KeeperProcess::start(Terminal &terminal) const {
  if (statusOfKeeper(place, 3s)) return true;
  const KeeperLauncher launcher(KeeperLauncher::standardProgram());
  const std::unique_ptr<ProcessHandle> launched = launcher.launch();
  if (!launched)
    return failedWith(QStringLiteral("Music Keeper is not installed beside this program"), terminal);
  const auto begin = std::chrono::steady_clock::now();
  while (!launched->hasEnded() || KeeperLock::holder(place.lock())) {
    if (statusOfKeeper(place, 1s)) return true;
    if (std::chrono::steady_clock::now() - begin > kStartLimit)
      return failedWith(QStringLiteral("Music Keeper runs but does not answer"), terminal);
    std::this_thread::sleep_for(20ms);
  }
  return failedWith(QStringLiteral("Music Keeper ended as soon as it was started; its log tells why"),
                    terminal);
}

bool KeeperProcess::waitForLibrary(Terminal &terminal) const {
  ProgressBar bar(terminal);
  while (const std::optional<Status> status = statusOfKeeper(place, 10s)) {
    if (!status->importing) {
      bar.clear();
      return true;
    }
    bar.setText(QStringLiteral("Music Keeper is taking in your library"));
    bar.setIndeterminate(status->importing->total <= 0);
    bar.setMaximum(double(status->importing->total));
    bar.setValue(double(status->importing->done));
    std::this_thread::sleep_for(100ms);
  }
  bar.clear();
  return failedWith(
      QStringLiteral("Music Keeper stopped answering while it took in its library; its log tells why"),
      terminal);
}

bool KeeperProcess::stop(Terminal &terminal) const {
  const std::optional<qint64> holder = KeeperLock::holder(place.lock());
  if (!holder) return failedWith(QStringLiteral("Music Keeper does not run"), terminal);
  const ProcessHandle process(*holder);
  const auto end = std::chrono::steady_clock::now() + kEndLimit;
  const std::optional<ScriptFailure> failure = askToQuit(process, end);
  if (failure) return failedWith(textOf(*failure), terminal);
  while (!process.hasEnded()) {
    if (std::chrono::steady_clock::now() > end)
      return failedWith(
          QStringLiteral("Music Keeper (process %1) was asked to quit and still runs").arg(*holder),
          terminal);
    std::this_thread::sleep_for(20ms);
  }
  return true;
}

std::optional<ScriptFailure> KeeperProcess::askToQuit(const ProcessHandle &process, Deadline end) const {
  const QByteArray request =
      encodeRequest(ScriptRequest{QStringLiteral("tell application \"Music Keeper\" to quit")});
  while (!process.hasEnded() && std::chrono::steady_clock::now() < end) {
    // One that holds the lock and does not listen begins or ends.
    const auto connection = KeeperConnection::open(place, 200ms, nullptr);
    if (!connection) {
      std::this_thread::sleep_for(20ms);
      continue;
    }
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
    const auto answer = connection->ask(request, std::max(left, 1ms));
    const auto outcome = answer ? decodeOutcome(*answer) : std::nullopt;
    // Without an answer it may be ending already.
    return outcome && outcome->failure && outcome->failure->number != kNotRunning ? outcome->failure
                                                                                  : std::nullopt;
  }
  return std::nullopt;
}
