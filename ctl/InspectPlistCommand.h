#pragma once

#include "ctl/Command.h"

/// Shows how a property-list file reads: its tree, what was wrong with it, and what the log counts.
class InspectPlistCommand : public Command {
 public:
  QString name() const override { return QStringLiteral("inspect plist"); }
  QString usage() const override { return QStringLiteral("FILE [--manual] [--json]"); }
  QString help() const override {
    return QStringLiteral("shows how a property-list file reads (--manual: our own reader first)");
  }
  int run(const QStringList &arguments, Terminal &terminal) override;
};
