#pragma once

#include "ctl/Command.h"

/// Cuts the version 2.4 tag off an MPEG file, or off a new copy of it.
class TagsStripCommand : public Command {
 public:
  QString name() const override { return QStringLiteral("tags strip"); }
  QString usage() const override { return QStringLiteral("FILE [OUT]"); }
  QString help() const override {
    return QStringLiteral("cuts off a file's version 2.4 tag, or that of a new copy OUT");
  }
  int run(const QStringList &arguments, Terminal &terminal) override;
};
