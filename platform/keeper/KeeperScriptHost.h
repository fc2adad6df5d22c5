#pragma once

#include <memory>
#include <mutex>
#include <vector>

#include "platform/ScriptHost.h"
#include "platform/keeper/KeeperConnection.h"
#include "platform/keeper/KeeperLauncher.h"

/// Has the keeper run scripts, over its socket. Each run has a connection of its own, which the next one
/// takes over. Any thread, several at once.
class KeeperScriptHost : public ScriptHost {
 public:
  /// Starts a keeper that does not run by the launcher, which outlives this; without one (null) it is -600.
  KeeperScriptHost(KeeperPlace place, const KeeperLauncher *launcher);

  /// -600 if there is no keeper to start, -10810 if one was started and ended before it served, -609 if the
  /// keeper went away before its answer was whole. Without a time limit of its own.
  ScriptOutcome run(const QString &source) override;

 private:
  std::unique_ptr<KeeperConnection> kept();
  void keep(std::unique_ptr<KeeperConnection> connection);
  /// A connection to a keeper that runs, or that is started and waited for; else why there is none.
  std::unique_ptr<KeeperConnection> connected(ScriptFailure *failure);

  const KeeperPlace place;
  const KeeperLauncher *const launcher;
  std::mutex lock;
  // Guarded by lock.
  std::vector<std::unique_ptr<KeeperConnection>> idle;
};
