#pragma once

#include "platform/keeper/KeeperProtocol.h"

/// The library behind the socket, as the service sees it. Made, used and ended on the script thread; `status`
/// on any thread. Nothing throws.
class KeeperEngine {
 public:
  virtual ~KeeperEngine() = default;
  /// Opens the library; empty, or one line that says why it cannot be opened.
  [[nodiscard]] virtual QString open() = 0;
  /// Runs a script to its end.
  virtual ScriptOutcome run(const QString &source) = 0;
  /// Answers a request that is no script and needs the library: a text with the lines to show, or a failure.
  virtual ScriptOutcome importFile(const keeperProtocol::ImportRequest &request) = 0;
  virtual ScriptOutcome exportFile(const keeperProtocol::ExportRequest &request) = 0;
  /// Whether something that was changed may not have reached the disk yet. Script thread.
  virtual bool hasUnsecured() = 0;
  /// Returns once all that was changed before has reached the disk; empty, or one line that says why that is
  /// not sure. Any thread, beside scripts that run.
  [[nodiscard]] virtual QString secure() = 0;
  /// The script or import that runs ends as soon as it can, with a failure, and so does all that comes after
  /// it. Any thread.
  virtual void interrupt() = 0;
  /// Saves what is to be saved and ends.
  virtual void close() = 0;
  /// True once a script has asked to quit.
  virtual bool wantsToQuit() const = 0;
  /// At once, even while a script runs.
  virtual keeperProtocol::Status status() const = 0;
};
