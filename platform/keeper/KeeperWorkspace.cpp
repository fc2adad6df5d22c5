#include "platform/keeper/KeeperWorkspace.h"

#include "platform/KeeperIdentity.h"
#include "platform/keeper/KeeperLock.h"
#include "platform/keeper/KeeperStatus.h"

using namespace std::chrono_literals;

KeeperWorkspace::KeeperWorkspace(Workspace *desktop_, KeeperPlace place_, const KeeperLauncher *launcher_)
    : desktop(desktop_), place(std::move(place_)), launcher(launcher_) {}

RunningApplication KeeperWorkspace::keeper() {
  return {keeperIdentity::kIdentifier, keeperIdentity::kName};
}

QString KeeperWorkspace::displayNameOfApplication(const QString &path) const {
  return desktop->displayNameOfApplication(path);
}

QString KeeperWorkspace::systemDescription() const {
  return desktop->systemDescription();
}

bool KeeperWorkspace::recycle(const QString &path, QString *error) {
  return desktop->recycle(path, error);
}

QStringList KeeperWorkspace::trashFolders() const {
  return desktop->trashFolders();
}

std::vector<RunningApplication> KeeperWorkspace::runningApplications() const {
  std::vector<RunningApplication> running = desktop->runningApplications();
  if (KeeperLock::holder(place.lock())) running.push_back(keeper());
  return running;
}

bool KeeperWorkspace::launchApplication(const QString &identifier) {
  if (identifier != keeper().bundleIdentifier) return desktop->launchApplication(identifier);
  if (KeeperLock::holder(place.lock())) return true;
  return launcher->launch() != nullptr;
}

LibraryActivity KeeperWorkspace::libraryActivity() const {
  LibraryActivity activity;
  if (!KeeperLock::holder(place.lock())) return activity;
  const auto status = statusOfKeeper(place, 250ms);
  if (!status) {
    activity.state = LibraryActivity::State::NoAnswer;
  } else if (status->importing) {
    activity.state = LibraryActivity::State::Importing;
    activity.file = status->importing->file;
    activity.done = status->importing->done;
    activity.total = status->importing->total;
  } else {
    activity.problem = status->importProblem;
  }
  return activity;
}

Workspace::Subscription KeeperWorkspace::observeApplications(
    std::function<void(const RunningApplication &)> launched,
    std::function<void(const RunningApplication &)> terminated) {
  Observer observer;
  observer.onDesktop = desktop->observeApplications(launched, terminated);
  observer.watch = std::make_unique<KeeperWatch>(
      place, [launched = std::move(launched), terminated = std::move(terminated)](bool isRunning) {
        (isRunning ? launched : terminated)(keeper());
      });
  observers[++lastSubscription] = std::move(observer);
  return lastSubscription;
}

void KeeperWorkspace::stopObserving(Subscription subscription) {
  const auto found = observers.find(subscription);
  if (found == observers.end()) return;
  desktop->stopObserving(found->second.onDesktop);
  // It may be this one's own notice that is being answered.
  found->second.watch.release()->deleteLater();
  observers.erase(found);
}
