#pragma once

#include <mutex>

#include "platform/keeper/KeeperProtocol.h"

/// What the keeper says of itself while it is busy: written by those who know, read at any time. Any thread.
class StatusBoard {
 public:
  keeperProtocol::Status read() const {
    const std::lock_guard guard(lock);
    return status;
  }
  template <class Change>
  void write(Change change) {
    const std::lock_guard guard(lock);
    change(status);
  }
  /// How far an import is, from its beginning on.
  void showImport(const keeperProtocol::Importing &importing) {
    write([&](keeperProtocol::Status &shown) { shown.importing = importing; });
  }

 private:
  mutable std::mutex lock;
  // Guarded by lock.
  keeperProtocol::Status status;
};
