#include "ctl/MergeCommand.h"

#include <QFileInfo>

#include "app/library/LibraryLocation.h"
#include "ctl/KeeperProcess.h"
#include "ctl/MediaFolder.h"
#include "ctl/MergeReporter.h"
#include "ctl/OpenedLibrary.h"
#include "ctl/PlanMarks.h"
#include "ctl/PlannedMerge.h"
#include "ctl/ScanRun.h"
#include "ctl/Session.h"
#include "platform/keeper/KeeperPlatform.h"
#include "support/Preferences.h"

namespace {

/// Leaves only these groups marked, all without numbers. False with a message for a number that no group has.
bool keepsGroups(AppState &state, const std::optional<std::vector<qint64>> &numbers, Terminal &terminal) {
  const std::vector<qint64> unknown = planMarks::keepGroups(state, numbers);
  for (const qint64 number : unknown) terminal.say(QStringLiteral("there is no group %1").arg(number));
  return unknown.empty();
}

}  // namespace

int MergeCommand::run(const QStringList &arguments, Terminal &terminal) {
  Options options(ScanRequest::flagNames() + MergeRequest::flagNames(),
                  ScanRequest::valueNames() + MergeRequest::valueNames());
  Wishes wishes;
  QString error;
  if (!options.parse(arguments, 0, &error) || !wishes.scan.take(options, &error) ||
      !wishes.merge.take(options, &wishes.scan, &error))
    return wrongUse(error, terminal);
  if (!isMediaFolderUsable(wishes.scan.media, terminal)) return exitCode::kReported;
  const Session session(Session::LogAtEnd::Compressed);
  return wishes.merge.yes ? mergeThroughKeeper(wishes, nullptr, terminal) : look(wishes, terminal);
}

int MergeCommand::look(const Wishes &wishes, Terminal &terminal) const {
  if (!chooseLibraryToScan(wishes.scan.library, terminal)) return exitCode::kReported;
  std::optional<MergePlan> plan;
  {
    ScanRun run(runLoop, terminal);
    if (!run.scan(wishes.scan)) return exitCode::kReported;
    if (run.isInterrupted()) return reported(QStringLiteral("cancelled"), terminal);
    plan = planOf(wishes, nullptr, &run, terminal);
  }
  if (!plan) return exitCode::kReported;
  const MergeReporter reporter(*plan);
  wishes.scan.json ? reporter.printJson(std::nullopt, terminal) : reporter.printPlan(terminal);
  terminal.out.flush();
  if (plan->groups.empty()) return exitCode::kDone;
  if (planMarks::groupsToMerge(*plan) == 0) return exitCode::kReported;
  const bool asks = terminal.inIsTerminal && !wishes.scan.json && wishes.scan.library.isEmpty();
  if (wishes.merge.dryRun) return exitCode::kReported;
  if (!asks) {
    const bool isNamed = !wishes.scan.library.isEmpty();
    return reported(
        isNamed ? QStringLiteral("nothing has been changed; a library named with --library is only looked at")
                : QStringLiteral("nothing has been changed; --yes carries the plan out"),
        terminal);
  }
  if (!agrees(QStringLiteral("Carry this out?"), terminal))
    return reported(QStringLiteral("nothing has been changed"), terminal);
  return mergeThroughKeeper(wishes, &*plan, terminal);
}

int MergeCommand::mergeThroughKeeper(const Wishes &wishes, const MergePlan *agreed,
                                     Terminal &terminal) const {
  if (platform().scriptHost) return mergeHere(wishes, agreed, {}, terminal);
  const KeeperProcess process;
  const bool ranBefore = process.isRunning();
  if (!process.start(terminal) || !process.waitForLibrary(terminal))
    return reported(
        QStringLiteral("a merge needs Music Keeper; \"tallyfenctl keeper status\" tells how it is"),
        terminal);
  const auto letKeeperGo = [&] {
    // Nobody but this program has started it.
    if (!ranBefore && process.isRunning()) (void)process.stop(terminal);
  };
  int code = exitCode::kReported;
  {
    // One that goes in the middle must not come again for the sake of a script.
    const KeeperPlatform keeper(KeeperPlatform::Launching::Never);
    iTunesLibInterface::reset();
    iTunesInterface::resetIsMusicAppRunning();
    code = mergeHere(wishes, agreed, letKeeperGo, terminal);
  }
  iTunesLibInterface::reset();
  letKeeperGo();
  return code;
}

int MergeCommand::mergeHere(const Wishes &wishes, const MergePlan *agreed,
                            const std::function<void()> &beforeExit, Terminal &terminal) const {
  if (!chooseLibraryToScan({}, terminal)) return exitCode::kReported;
  ScanRun run(runLoop, terminal);
  if (!run.scan(wishes.scan)) return exitCode::kReported;
  if (run.isInterrupted()) return reported(QStringLiteral("cancelled; nothing has been changed"), terminal);
  const std::optional<MergePlan> plan = planOf(wishes, agreed, &run, terminal);
  if (!plan) return exitCode::kReported;
  if (agreed && !planMarks::areSame(*agreed, *plan))
    return reported(QStringLiteral("the library has changed since the plan was shown; nothing was merged"),
                    terminal);
  if (!agreed && !wishes.scan.json) MergeReporter(*plan).printPlan(terminal);
  PlannedMerge merge(*plan, run, wishes.scan.json, terminal);
  merge.beforeExit = beforeExit;
  merge.exitProcess = exitProcess;
  return merge.run();
}

std::optional<MergePlan> MergeCommand::planOf(const Wishes &wishes, const MergePlan *agreed, ScanRun *run,
                                              Terminal &terminal) const {
  AppState &state = run->application().state();
  run->ensureMarks();
  if (agreed) {
    planMarks::markAsIn(*agreed, state);
  } else if (!keepsGroups(state, wishes.merge.groups, terminal)) {
    return std::nullopt;
  }
  if (run->application().mergeEngine().haveUnkeptFolderPathProblem()) {
    const QString folder = prefs::text(prefs::unkeptPath);
    const bool isThere = QFileInfo(folder).isDir();
    const QString what =
        folder.isEmpty() ? QStringLiteral("no folder for the files is set")
        : isThere ? QStringLiteral("the folder \"%1\" for the files cannot be read").arg(printable(folder))
                  : QStringLiteral("there is no folder \"%1\" for the files").arg(printable(folder));
    terminal.say(what + QStringLiteral("; name one with --folder"));
    return std::nullopt;
  }
  MergePlan plan = makeMergePlan(state, MergeSettings::fromPreferences());
  std::erase_if(plan.groups, [](const GroupPlan &group) { return !group.isMarked(); });
  planMarks::leaveOutGroupsWithoutFiles(plan, state);
  return plan;
}
