#pragma once

#include "ctl/Command.h"
#include "ctl/EventLoop.h"
#include "ctl/MergeRequest.h"

class ScanRun;
struct MergePlan;

/// Merges duplicates: scans, marks, shows the plan, and once it is agreed to has Music Keeper carry it out.
/// An agreement is `--yes` or the answer of a person; without either nothing is changed. An interruption ends
/// the merge behind the step that is under way.
class MergeCommand : public Command {
 public:
  explicit MergeCommand(LoopRunner loopRunner = runEventLoop) : runLoop(std::move(loopRunner)) {}
  /// How the process ends where a thread hangs, as `PlannedMerge` has it; empty for the real way.
  std::function<void(int)> exitProcess;

  QString name() const override { return QStringLiteral("merge"); }
  QString usage() const override { return MergeRequest::usage() + u' ' + ScanRequest::usage(); }
  QString help() const override {
    return QStringLiteral("makes one track of each group of duplicates; first shows what it will do");
  }
  int run(const QStringList &arguments, Terminal &terminal) override;

 private:
  struct Wishes {
    ScanRequest scan;
    MergeRequest merge;
  };
  /// Looks, and tells the plan; merges it if a person agrees.
  int look(const Wishes &wishes, Terminal &terminal) const;
  /// Has Music Keeper run, and merges; `agreed` is the plan that was agreed to, or null for any.
  int mergeThroughKeeper(const Wishes &wishes, const MergePlan *agreed, Terminal &terminal) const;
  /// Merges through the music application among the services.
  int mergeHere(const Wishes &wishes, const MergePlan *agreed, const std::function<void()> &beforeExit,
                Terminal &terminal) const;
  /// The plan of what the last scan of the run found, with the marks of an agreed plan if there is one.
  /// Nothing, with a message, if a wish cannot be met.
  std::optional<MergePlan> planOf(const Wishes &wishes, const MergePlan *agreed, ScanRun *run,
                                  Terminal &terminal) const;

  const LoopRunner runLoop;
};
