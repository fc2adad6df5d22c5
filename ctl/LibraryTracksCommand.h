#pragma once

#include "ctl/Command.h"

/// Lists the tracks that count as songs, one JSON object a line, in the order in which scans see them.
class LibraryTracksCommand : public Command {
 public:
  QString name() const override { return QStringLiteral("library tracks"); }
  QString usage() const override { return QStringLiteral("[--library FILE] --json"); }
  QString help() const override {
    return QStringLiteral("lists the tracks and the keys by which they are compared");
  }
  int run(const QStringList &arguments, Terminal &terminal) override;
};
