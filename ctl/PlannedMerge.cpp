#include "ctl/PlannedMerge.h"

#include "ctl/Command.h"
#include "ctl/MergeReporter.h"
#include "ctl/PlanMarks.h"
#include "platform/Platform.h"
#include "support/BMLog.h"
#include "support/Preferences.h"

namespace {

/// The report names what the alert is about.
bool isTold(const Alert &problem, const std::vector<MergeFailure> &failures) {
  return std::any_of(failures.begin(), failures.end(), [&](const MergeFailure &failure) {
    return (!failure.path.isEmpty() && problem.message.contains(failure.path)) ||
           (!failure.reason.isEmpty() && problem.message.contains(failure.reason)) ||
           failure.reason.startsWith(problem.title);
  });
}

}  // namespace

PlannedMerge::PlannedMerge(const MergePlan &mergePlan, ScanRun &scanRun, bool asJson, Terminal &terminal)
    : plan(mergePlan), scan(scanRun), json(asJson), lines(terminal) {}

int PlannedMerge::run() {
  if (planMarks::groupsToMerge(plan) == 0) return tell();
  TerminalView &view = scan.view();
  answerQuestions();
  scan.application().mergeSupervisor().endProcess = [this](int) {
    hasBegun = true;
    // What the worker has in hand is told as well if it comes back.
    (void)endWork();
    leave();
  };
  view.beginMerge();
  scan.application().mergeMarkedDuplicates();
  // A question that was answered with no leaves nothing running.
  hasBegun = prefs::isTrue(prefs::busy) || view.isMergeOver();
  if (hasBegun) {
    scan.wait([&view] { return view.isMergeOver(); });
    // The music application may have gone in the middle of a step.
    if (!endWork()) leave();
  }
  view.endProgressSheet();
  if (!hasBegun) lines.say(QStringLiteral("nothing has been changed"));
  return tell();
}

void PlannedMerge::answerQuestions() {
  if (!lines.inIsTerminal) return;
  scan.view().onQuestion = [this](const Alert &alert) -> std::optional<int> {
    for (int i = 0; i < alert.buttons.size(); ++i) {
      if (i != alert.safeButton && agrees(alert.buttons[i] + u'?', lines)) return i;
    }
    return std::nullopt;
  };
}

bool PlannedMerge::endWork() {
  constexpr double kLongestSeconds = 10.0;
  AppState &state = scan.application().state();
  state.mIsEnding = true;
  state.operation.mCancelOperation = true;
  if (state.workers.waitForAll(kLongestSeconds)) return true;
  BMLog("!!! the merge's thread still waits after %.0f seconds: its script is broken off", kLongestSeconds);
  platform().scriptHost->setBrokenOff(true);
  const bool hasEnded = state.workers.waitForAll(kLongestSeconds);
  platform().scriptHost->setBrokenOff(false);
  return hasEnded;
}

void PlannedMerge::leave() {
  scan.view().endProgressSheet();
  (void)tell();
  lines.out.flush();
  lines.err.flush();
  if (beforeExit) beforeExit();
  exitProcess ? exitProcess(exitCode::kReported) : std::_Exit(exitCode::kReported);
}

int PlannedMerge::tell() {
  const MergeReport::Contents outcome =
      hasBegun ? scan.application().state().merge.report.contents() : MergeReport::Contents();
  if (json) {
    MergeReporter(plan).printJson(outcomeWithProblems(), lines);
  } else if (hasBegun) {
    MergeReporter::printOutcome(outcome, lines);
  }
  if (scan.isInterrupted()) lines.say(QStringLiteral("cancelled"));
  return isDone(outcome) ? exitCode::kDone : exitCode::kReported;
}

MergeReport::Contents PlannedMerge::outcomeWithProblems() const {
  AppState &state = scan.application().state();
  MergeReport::Contents outcome = hasBegun ? state.merge.report.contents() : MergeReport::Contents();
  for (const Alert &problem : scan.view().problemsOfMerge()) {
    if (!isTold(problem, outcome.failures))
      outcome.failures.push_back(
          {state.operation.currentActionTitle(), {}, problem.title + u'\n' + problem.message});
  }
  return outcome;
}

bool PlannedMerge::isDone(const MergeReport::Contents &outcome) const {
  const bool isWhole = std::all_of(outcome.groups.begin(), outcome.groups.end(),
                                   [](const MergedGroup &group) { return group.complete; });
  const bool hasProblems = !outcome.failures.empty() || !scan.view().problemsOfMerge().empty() ||
                           scan.view().hasFailed() || scan.isInterrupted();
  const bool isLeftOut = planMarks::groupsToMerge(plan) < qsizetype(plan.groups.size());
  return isWhole && !hasProblems && !isLeftOut && (plan.groups.empty() || !outcome.groups.empty());
}
