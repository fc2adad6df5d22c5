#pragma once

#include "ctl/ScanningCommand.h"

/// Tells of the names alone that a scan finds in more than one spelling.
class NamesCommand : public ScanningCommand {
 public:
  explicit NamesCommand(LoopRunner loopRunner = runEventLoop) : ScanningCommand(std::move(loopRunner)) {}

  QString name() const override { return QStringLiteral("names"); }
  QString usage() const override { return ScanRequest::usage() + QStringLiteral(" [--rows]"); }
  QString help() const override {
    return QStringLiteral("shows artists and albums that are spelled in several ways");
  }

 protected:
  QStringList ownFlagNames() const override { return {QStringLiteral("--rows")}; }
  bool report(ScanRun &run, const Options &options, Terminal &terminal) const override;
};
