#include "ctl/KeeperProcess.h"

#include <chrono>
#include <thread>

#include "ctl/ProgressBar.h"
#include "platform/Platform.h"
#include "platform/keeper/KeeperLauncher.h"
#include "platform/keeper/KeeperLock.h"
#include "platform/keeper/KeeperProtocol.h"
#include "platform/keeper/KeeperScriptHost.h"
#include "platform/keeper/KeeperStatus.h"

using namespace keeperProtocol;
using namespace std::chrono_literals;

namespace {

/// How long a launched keeper may take until it answers.
constexpr auto kStartLimit = 30s;

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
  const ScriptOutcome outcome =
      KeeperScriptHost(place, std::nullopt).run(QStringLiteral("tell application \"Music Keeper\" to quit"));
  // It may have been ending already.
  const bool wasEnding = outcome.failure && (outcome.failure->number == kNotRunning ||
                                             outcome.failure->number == kConnectionInvalid);
  if (outcome.failure && !wasEnding)
    return failedWith(QStringLiteral("error %1: %2")
                          .arg(outcome.failure->number.value_or(0))
                          .arg(printable(outcome.failure->message)),
                      terminal);
  while (!process.hasEnded()) std::this_thread::sleep_for(20ms);
  return true;
}
