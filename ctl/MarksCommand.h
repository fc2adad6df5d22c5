#pragma once

#include "ctl/ScanningCommand.h"

/// Scans, marks every group of duplicates and tells which rows were chosen, and why.
class MarksCommand : public ScanningCommand {
 public:
  explicit MarksCommand(LoopRunner loopRunner = runEventLoop) : ScanningCommand(std::move(loopRunner)) {}

  QString name() const override { return QStringLiteral("marks"); }
  QString help() const override {
    return QStringLiteral("shows which copy gives the information and which the audio, and why");
  }

 protected:
  bool report(ScanRun &run, const Options &options, Terminal &terminal) const override;
};
