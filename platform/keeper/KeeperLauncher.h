#pragma once

#include <QString>
#include <memory>

#include "platform/keeper/KeeperPlace.h"
#include "platform/keeper/ProcessHandle.h"

/// Starts the keeper's program as a process of its own, which outlives this one. Any thread.
class KeeperLauncher {
 public:
  /// The program "tallyfen-keeper" beside the running one. Behind the application object.
  static QString standardProgram();

  explicit KeeperLauncher(QString program_) : program(std::move(program_)) {}

  /// True if there is a program to start.
  bool canLaunch() const;
  /// Starts it in the background, without waiting for anything; null if it cannot be started. One that finds
  /// another serving ends at once.
  std::unique_ptr<ProcessHandle> launch() const;

 private:
  QString program;
};
