#pragma once

#include "ctl/Command.h"

class Options;

/// Has the music application run a script and shows what it answers. Starts an application that does not run.
class ScriptCommand : public Command {
 public:
  QString name() const override { return QStringLiteral("script"); }
  QString usage() const override {
    return QStringLiteral("[--timeout SECONDS] --name NAME ARG...|--compiled HANDLER ARG...|FILE|-");
  }
  QString help() const override {
    return QStringLiteral("runs a script, from a file, the input or our own, in the music application");
  }
  int run(const QStringList &arguments, Terminal &terminal) override;

 private:
  int runHere(const Options &options, double timeout, Terminal &terminal) const;
};
