#pragma once

#include <functional>

#include "app/state/MergeState.h"
#include "ctl/ScanRun.h"
#include "repairs/MergePlan.h"

/// Carries a plan out and tells what came of it. The rows bear the plan's marks and no others. Main thread;
/// once.
class PlannedMerge {
 public:
  /// The plan and the run, which has scanned, outlive it.
  PlannedMerge(const MergePlan &mergePlan, ScanRun &scanRun, bool asJson, Terminal &terminal);
  PlannedMerge(const PlannedMerge &) = delete;

  /// Merges until the end, an interruption or a failure, tells the outcome and answers the exit code. Where a
  /// thread hangs the outcome is told too, but the process ends.
  int run();

  /// What is to be done before the process ends so.
  std::function<void()> beforeExit;
  /// Ends the process with an exit code, with a thread that hangs. Comes back in tests only, by throwing.
  std::function<void(int)> exitProcess;

 private:
  void answerQuestions();
  /// Waits for the workers, and breaks their scripts off if they wait for these; false if one still hangs.
  [[nodiscard]] bool endWork();
  void leave();
  int tell();
  MergeReport::Contents outcomeWithProblems() const;
  bool isDone(const MergeReport::Contents &outcome) const;

  const MergePlan &plan;
  ScanRun &scan;
  const bool json;
  Terminal &lines;
  bool hasBegun = false;
};
