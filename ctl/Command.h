#pragma once

#include <QStringList>

#include "ctl/Terminal.h"

/// What a command's exit code says.
namespace exitCode {
inline constexpr int kDone = 0;
/// Problems were found, or the work failed or was cancelled.
inline constexpr int kReported = 1;
inline constexpr int kWrongUse = 2;
}  // namespace exitCode

/// Tells the user why a command ends without having done its work; answers `kReported`.
int reported(const QString &message, Terminal &terminal);

/// One command of the program. Main thread, behind `setPlatform`.
class Command {
 public:
  virtual ~Command() = default;
  /// One word or two: "scan", "library info".
  virtual QString name() const = 0;
  /// What follows the name: "[--library FILE] [--json]".
  virtual QString usage() const = 0;
  /// One line for the list of commands.
  virtual QString help() const = 0;
  /// Does the work with the arguments behind the name and answers the exit code.
  virtual int run(const QStringList &arguments, Terminal &terminal) = 0;

 protected:
  /// Says what is wrong with the arguments and how the command is used; answers `kWrongUse`.
  int wrongUse(const QString &message, Terminal &terminal) const;
};
