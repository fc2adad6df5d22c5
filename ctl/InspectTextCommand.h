#pragma once

#include "ctl/Command.h"

/// Answers requests about the text and byte operations, one JSON object a line each way, until the input
/// ends.
class InspectTextCommand : public Command {
 public:
  QString name() const override { return QStringLiteral("inspect text"); }
  QString usage() const override { return QString(); }
  QString help() const override {
    return QStringLiteral("answers requests about text operations from standard input");
  }
  int run(const QStringList &arguments, Terminal &terminal) override;
};
