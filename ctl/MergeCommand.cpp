#include "ctl/MergeCommand.h"

#include <QFileInfo>

#include "app/library/LibraryLocation.h"
#include "ctl/KeeperProcess.h"
#include "ctl/MediaFolder.h"
#include "ctl/MergeReporter.h"
#include "ctl/OpenedLibrary.h"
#include "ctl/ScanRun.h"
#include "ctl/Session.h"
#include "platform/keeper/KeeperPlatform.h"
#include "support/Preferences.h"
#include "values/Keys.h"

namespace {

/// Asks on the terminal; anything but a yes is a no.
bool agrees(const QString &question, Terminal &terminal) {
  terminal.err << question.toStdString() << " [y/N] " << std::flush;
  std::string answer;
  std::getline(terminal.in, answer);
  const QString word = QString::fromStdString(answer).trimmed().toLower();
  return word == u"y" || word == u"yes";
}

/// Leaves only the groups marked that are to be merged; answers the numbers that no group has.
std::vector<qint64> keepMarks(AppState &state, const std::vector<qint64> &numbers) {
  const Array &rows = std::as_const(state.lists).mDuplicateSongDicts;
  std::vector<qint64> unknown = numbers;
  std::lock_guard held(*state.threadLockForObject(rows));
  for (qsizetype i = 0; i < rows.size(); ++i) {
    Dictionary row = rows.at(i).toDictionary();
    const qint64 group = row.value(keys::DupeGroup).toInteger();
    std::erase(unknown, group);
    if (numbers.empty() || std::find(numbers.begin(), numbers.end(), group) != numbers.end()) continue;
    row.remove(keys::markInfo);
    row.remove(keys::markAudio);
  }
  return unknown;
}

/// Leaves only these groups marked, all without a number. False with a message for a number that no group
/// has.
bool keepsGroups(AppState &state, const std::vector<qint64> &numbers, Terminal &terminal) {
  const std::vector<qint64> unknown = keepMarks(state, numbers);
  for (const qint64 number : unknown) terminal.say(QStringLiteral("there is no group %1").arg(number));
  return unknown.empty();
}

/// A merge stops at a group whose marked file is gone, so such groups do not take part.
void unmarkGroupsWithoutFiles(const MergePlan &plan, AppState &state) {
  std::vector<qint64> whole;
  for (const GroupPlan &group : plan.groups) {
    if (!group.missingPath) whole.push_back(group.number);
  }
  // No number at all would mean all of them.
  keepMarks(state, whole.empty() ? std::vector<qint64>{0} : whole);
}

/// Marks the rows as the plan has them: a second scan may choose otherwise between copies that are alike.
void markAsIn(const MergePlan &plan, AppState &state) {
  QSet<QString> audio, info;
  for (const GroupPlan &group : plan.groups) {
    audio.insert(group.audioRow.value(keys::PersistentID).toText());
    info.insert(group.infoRow.value(keys::PersistentID).toText());
  }
  const Array &rows = std::as_const(state.lists).mDuplicateSongDicts;
  std::lock_guard held(*state.threadLockForObject(rows));
  for (qsizetype i = 0; i < rows.size(); ++i) {
    Dictionary row = rows.at(i).toDictionary();
    const QString pid = row.value(keys::PersistentID).toText();
    row.set(keys::markAudio, audio.contains(pid));
    row.set(keys::markInfo, info.contains(pid));
  }
}

/// The same tracks go into the same tracks, whatever the order of the groups and their rows.
bool isSame(const MergePlan &one, const MergePlan &other) {
  const auto groupsOf = [](const MergePlan &plan) {
    QStringList groups;
    for (const GroupPlan &group : plan.groups) {
      QStringList rows;
      for (const GroupPlan::Unkept &row : group.unkept) rows << row.pid;
      rows.sort();
      groups << group.audioRow.value(keys::PersistentID).toText() +
                    group.infoRow.value(keys::PersistentID).toText() + rows.join(u' ') +
                    (group.missingPath ? u'-' : u'+');
    }
    groups.sort();
    return groups;
  };
  return groupsOf(one) == groupsOf(other);
}

int reported(const QString &message, Terminal &terminal) {
  terminal.say(message);
  return exitcode::kReported;
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
  if (!isMediaFolderUsable(wishes.scan.media, terminal)) return exitcode::kReported;
  const Session session(Session::LogAtEnd::Compressed);
  return wishes.merge.yes ? mergeThroughKeeper(wishes, nullptr, terminal) : look(wishes, terminal);
}

int MergeCommand::look(const Wishes &wishes, Terminal &terminal) const {
  if (!chooseLibraryFile(wishes.scan.library, terminal)) return exitcode::kReported;
  if (!iTunesInterface::haveDirectLibraryAccess())
    warnIfCutOff(iTunesInterface::currentMusicLibraryXMLPath(), terminal);
  std::optional<MergePlan> plan;
  {
    ScanRun run(runLoop, terminal);
    if (!run.scan(wishes.scan)) return exitcode::kReported;
    if (run.isInterrupted()) return reported(QStringLiteral("cancelled"), terminal);
    plan = planOf(wishes, nullptr, &run, terminal);
  }
  if (!plan) return exitcode::kReported;
  const MergeReporter reporter(*plan);
  wishes.scan.json ? reporter.printJson(std::nullopt, terminal) : reporter.printPlan(terminal);
  terminal.out.flush();
  if (plan->groups.empty()) return exitcode::kDone;
  const bool asks =
      terminal.inIsTerminal && !wishes.merge.dryRun && !wishes.scan.json && wishes.scan.library.isEmpty();
  if (!asks) {
    if (!wishes.merge.dryRun)
      terminal.say(QStringLiteral("nothing has been changed; --yes carries the plan out"));
    return exitcode::kReported;
  }
  if (!agrees(QStringLiteral("Carry this out?"), terminal))
    return reported(QStringLiteral("nothing has been changed"), terminal);
  return mergeThroughKeeper(wishes, &*plan, terminal);
}

int MergeCommand::mergeThroughKeeper(const Wishes &wishes, const MergePlan *agreed,
                                     Terminal &terminal) const {
  if (platform().scriptHost) return mergeHere(wishes, agreed, terminal);
  const KeeperProcess process;
  const bool ranBefore = process.isRunning();
  if (!process.start(terminal) || !process.waitForLibrary(terminal))
    return reported(
        QStringLiteral("a merge needs Music Keeper; \"tallyfenctl keeper status\" tells how it is"),
        terminal);
  int code = exitcode::kReported;
  {
    const KeeperPlatform keeper(KeeperPlatform::Launching::WhenNeeded);
    iTunesLibInterface::reset();
    iTunesInterface::resetIsMusicAppRunning();
    code = mergeHere(wishes, agreed, terminal);
  }
  iTunesLibInterface::reset();
  // Nobody but this program has started it.
  if (!ranBefore && process.isRunning() && !process.stop(terminal)) return exitcode::kReported;
  return code;
}

int MergeCommand::mergeHere(const Wishes &wishes, const MergePlan *agreed, Terminal &terminal) const {
  if (!chooseLibraryFile({}, terminal)) return exitcode::kReported;
  ScanRun run(runLoop, terminal);
  if (!run.scan(wishes.scan)) return exitcode::kReported;
  if (run.isInterrupted()) return reported(QStringLiteral("cancelled; nothing has been changed"), terminal);
  const std::optional<MergePlan> plan = planOf(wishes, agreed, &run, terminal);
  if (!plan) return exitcode::kReported;
  if (agreed && !isSame(*agreed, *plan))
    return reported(QStringLiteral("the library has changed since the plan was shown; nothing was merged"),
                    terminal);
  if (!agreed && !wishes.scan.json) MergeReporter(*plan).printPlan(terminal);
  return carryOut(*plan, wishes.scan.json, &run, terminal);
}

std::optional<MergePlan> MergeCommand::planOf(const Wishes &wishes, const MergePlan *agreed, ScanRun *run,
                                              Terminal &terminal) const {
  Application &application = run->application();
  AppState &state = application.state();
  // A scan whose groups are loose leaves the marks to the user.
  if (application.automark().lastChoices().empty()) application.automark().doAutomarkFromPreferences();
  if (agreed) {
    markAsIn(*agreed, state);
  } else if (!keepsGroups(state, wishes.merge.groups, terminal)) {
    return std::nullopt;
  }
  const MergeSettings settings = MergeSettings::fromPreferences();
  const bool needsFolder = settings.is(UnkeptPolicy::Folder);
  if (needsFolder && !QFileInfo(prefs::text(prefs::unkeptPath)).isDir()) {
    terminal.say(QStringLiteral("there is no folder \"%1\" for the files; name one with --folder")
                     .arg(printable(prefs::text(prefs::unkeptPath))));
    return std::nullopt;
  }
  MergePlan plan = makeMergePlan(state, settings);
  std::erase_if(plan.groups, [](const GroupPlan &group) { return !group.isMarked(); });
  unmarkGroupsWithoutFiles(plan, state);
  return plan;
}

int MergeCommand::carryOut(const MergePlan &plan, bool json, ScanRun *run, Terminal &terminal) const {
  TerminalView &view = run->view();
  AppState &state = run->application().state();
  const bool isLeftOut = std::any_of(plan.groups.begin(), plan.groups.end(),
                                     [](const GroupPlan &group) { return group.missingPath.has_value(); });
  if (terminal.inIsTerminal) {
    view.onQuestion = [&terminal](const Alert &alert) -> std::optional<int> {
      for (int i = 0; i < alert.buttons.size(); ++i) {
        if (i != alert.safeButton && agrees(alert.buttons[i] + u'?', terminal)) return i;
      }
      return std::nullopt;
    };
  }
  MergeReport::Contents outcome;
  if (!plan.groups.empty()) {
    view.beginMerge();
    run->application().mergeMarkedDuplicates();
    // A question that was answered with no leaves nothing running.
    const bool hasBegun = prefs::isTrue(prefs::busy) || view.isMergeOver();
    if (hasBegun) run->wait([&view] { return view.isMergeOver(); });
    view.endProgressSheet();
    if (hasBegun) outcome = state.merge.report.contents();
    if (!hasBegun) terminal.say(QStringLiteral("nothing has been changed"));
  }
  json ? MergeReporter(plan).printJson(outcome, terminal) : MergeReporter::printOutcome(outcome, terminal);
  if (run->isInterrupted()) terminal.say(QStringLiteral("cancelled"));
  const bool isWhole = std::all_of(outcome.groups.begin(), outcome.groups.end(),
                                   [](const MergedGroup &group) { return group.complete; });
  const bool isDone = isWhole && outcome.failures.empty() && !view.hasFailed() && !run->isInterrupted() &&
                      !isLeftOut && (plan.groups.empty() || !outcome.groups.empty());
  return isDone ? exitcode::kDone : exitcode::kReported;
}
