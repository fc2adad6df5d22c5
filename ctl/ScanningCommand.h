#pragma once

#include "ctl/Command.h"
#include "ctl/EventLoop.h"
#include "ctl/ScanRequest.h"

class ScanRun;

/// A command that loads a library and looks for problems in it, as the window's application does, and then
/// tells of what was found in its own way. What it sets is forgotten at the end. An interruption gives what
/// was found so far and exit code 1.
class ScanningCommand : public Command {
 public:
  explicit ScanningCommand(LoopRunner loopRunner) : runLoop(std::move(loopRunner)) {}

  QString usage() const override { return ScanRequest::usage(); }
  int run(const QStringList &arguments, Terminal &terminal) override;

 protected:
  /// The command's own options beside those of every scan.
  virtual QStringList ownFlagNames() const { return {}; }
  virtual QStringList ownValueNames() const { return {}; }
  /// A line about an own option's value that means nothing; empty if there is none.
  virtual QString complaintAbout(const Options &) const { return {}; }
  /// Tells of what the scan found; true if it found problems. No worker runs any more.
  virtual bool report(ScanRun &run, const Options &options, Terminal &terminal) const = 0;

 private:
  int scan(const ScanRequest &request, const Options &options, Terminal &terminal) const;

  const LoopRunner runLoop;
};
