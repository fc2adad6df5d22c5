#pragma once

#include "ctl/Command.h"

/// Shows the resources dictionary as the program sees it.
class InspectResourcesCommand : public Command {
 public:
  QString name() const override { return QStringLiteral("inspect resources"); }
  QString usage() const override { return QStringLiteral("--json"); }
  QString help() const override { return QStringLiteral("shows the program's own data tables"); }
  int run(const QStringList &arguments, Terminal &terminal) override;
};
