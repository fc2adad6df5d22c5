#pragma once

#include "ctl/Command.h"

/// Tells what a library holds and where its media lie.
class LibraryInfoCommand : public Command {
 public:
  QString name() const override { return QStringLiteral("library info"); }
  QString usage() const override { return QStringLiteral("[--library FILE] [--json]"); }
  QString help() const override {
    return QStringLiteral("shows the library's place, its tracks and its media folder");
  }
  int run(const QStringList &arguments, Terminal &terminal) override;
};
