#pragma once

#include <map>

#include "platform/Workspace.h"
#include "platform/keeper/KeeperLauncher.h"
#include "platform/keeper/KeeperWatch.h"

/// The desktop's workspace with the keeper among its applications: "Music Keeper", "com.brinmoor.keeper".
/// Everything else is left to the desktop's, which outlives this, as the launcher does.
class KeeperWorkspace : public Workspace {
 public:
  KeeperWorkspace(Workspace *desktop, KeeperPlace place, const KeeperLauncher *launcher);

  /// What the running keeper is called.
  static RunningApplication keeper();

  QString displayNameOfApplication(const QString &path) const override;
  QString systemDescription() const override;
  bool recycle(const QString &path, QString *error) override;
  QStringList trashFolders() const override;

  std::vector<RunningApplication> runningApplications() const override;
  bool launchApplication(const QString &identifier) override;
  LibraryActivity libraryActivity() const override;
  Subscription observeApplications(std::function<void(const RunningApplication &)> launched,
                                   std::function<void(const RunningApplication &)> terminated) override;
  void stopObserving(Subscription subscription) override;

 private:
  struct Observer {
    std::unique_ptr<KeeperWatch> watch;
    Subscription onDesktop = 0;
  };
  Workspace *const desktop;
  const KeeperPlace place;
  const KeeperLauncher *const launcher;
  // Main thread only.
  std::map<Subscription, Observer> observers;
  Subscription lastSubscription = 0;
};
