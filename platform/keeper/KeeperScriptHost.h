#pragma once

#include <memory>
#include <optional>

#include "platform/ScriptHost.h"
#include "platform/keeper/KeeperConnection.h"
#include "platform/keeper/KeeperLauncher.h"

/// Has the keeper run scripts, over its socket. Each run has a connection of its own, which the next one
/// takes over. Any thread, several at once.
class KeeperScriptHost : public ScriptHost {
 public:
  /// Starts a keeper that does not run by the launcher; without one that is -600.
  KeeperScriptHost(const KeeperPlace &place, const std::optional<KeeperLauncher> &launcher);
  ~KeeperScriptHost() override;

  /// -600 if there is no keeper to start, -10810 if one was started and ended before it served, -609 if the
  /// keeper went away before its answer was whole. Without a time limit of its own; a run may outlast this
  /// object.
  ScriptOutcome run(const QString &source) override;
  /// Runs are then -609.
  void setBrokenOff(bool isBrokenOff) override;

 private:
  class Door;
  /// Shared with the runs: one that nobody waits for any more may outlast this.
  const std::shared_ptr<Door> door;
};
