#pragma once

#include "ctl/ScanningCommand.h"

/// Tells of every problem that a scan finds, or of one kind of them.
class ScanCommand : public ScanningCommand {
 public:
  explicit ScanCommand(LoopRunner loopRunner = runEventLoop) : ScanningCommand(std::move(loopRunner)) {}

  QString name() const override { return QStringLiteral("scan"); }
  QString usage() const override {
    return ScanRequest::usage() + QStringLiteral(" [--rows] [--problem duplicates|names|orphans|missing]");
  }
  QString help() const override { return QStringLiteral("looks for problems in the library"); }

 protected:
  QStringList ownFlagNames() const override { return {QStringLiteral("--rows")}; }
  QStringList ownValueNames() const override { return {QStringLiteral("--problem")}; }
  QString complaintAbout(const Options &options) const override;
  bool report(ScanRun &run, const Options &options, Terminal &terminal) const override;
};
