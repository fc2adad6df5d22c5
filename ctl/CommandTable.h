#pragma once

#include <QStringList>
#include <memory>
#include <vector>

#include "ctl/Command.h"

/// Every command of the program, in the order of `tallyfenctl help`.
class CommandTable {
 public:
  CommandTable();

  /// Runs a whole command line, the program's name left out, and answers the exit code. Main thread, behind
  /// `setPlatform`.
  int run(const QStringList &arguments, Terminal &terminal) const;

 private:
  /// The command with the most words that begin the arguments; null if there is none.
  Command *find(const QStringList &arguments) const;
  int dispatch(const QStringList &arguments, Terminal &terminal) const;
  int help(const QStringList &arguments, Terminal &terminal) const;
  void printHelp(std::ostream &stream) const;

  std::vector<std::unique_ptr<Command>> commands;
};
