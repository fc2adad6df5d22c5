#pragma once

#include "ctl/Command.h"

/// Loads the library as a scan does, and tells which road it took and how long that was.
class LibraryLoadCommand : public Command {
 public:
  QString name() const override { return QStringLiteral("library load"); }
  QString usage() const override { return QStringLiteral("[--library FILE] [--json]"); }
  QString help() const override { return QStringLiteral("loads the library and tells how long that took"); }
  int run(const QStringList &arguments, Terminal &terminal) override;
};
