#pragma once

#include <atomic>
#include <thread>

#include "keeper/server/StatusBoard.h"

/// An import that runs beside the scripts: on a thread and with a store of its own. Owned by one thread.
class FirstImport {
 public:
  /// Begins at once. The board shows how far it is; both the board and the folder's store outlive this.
  FirstImport(const QString &folder, const keeperProtocol::ImportRequest &request, StatusBoard &board);
  FirstImport(const FirstImport &) = delete;
  /// Cancels an import that runs; the store is then as it was before.
  ~FirstImport();

  bool hasEnded() const { return ended; }
  /// What it came to, once it has ended.
  const ScriptOutcome &outcome() const { return result; }

 private:
  void run(const QString &folder, const keeperProtocol::ImportRequest &request);

  StatusBoard &board;
  std::atomic<bool> ended = false;
  std::atomic<bool> cancelled = false;
  ScriptOutcome result;
  std::thread thread;
};
