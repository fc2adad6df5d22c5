#pragma once

#include "ctl/Command.h"

/// Declares tracks not to be duplicates of one another, for all scans to come.
class IgnoreCommand : public Command {
 public:
  QString name() const override { return QStringLiteral("ignore"); }
  QString usage() const override;
  QString help() const override {
    return QStringLiteral("remembers that tracks are no duplicates of one another");
  }
  int run(const QStringList &arguments, Terminal &terminal) override;
};
