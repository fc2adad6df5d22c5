#include "repairs/SavedState.h"

#include <signal.h>

#include <QCoreApplication>
#include <QFileInfo>
#include <QProcess>

#include "app/library/CalculatedValues.h"
#include "app/state/AppState.h"
#include "bridge/iTunesInterface.h"
#include "platform/Platform.h"
#include "repairs/SavedLists.h"
#include "scanners/DuplicateGroups.h"
#include "support/BMLog.h"
#include "support/PrivateFile.h"
#include "values/Keys.h"

namespace {

constexpr qint32 kMostNoProgressRestarts = 5;
constexpr float kLongestAgeSeconds = 240.0f;

/// The list as it goes to disk. A worker may still take rows from it.
Value strippedList(AppState &state, const Array &guarded, const Array &rows) {
  const ObjectLock lock = state.threadLockForObject(guarded);
  const std::lock_guard held(*lock);
  return CalculatedValues::objectWithCalculatedValuesRemoved(rows.copyMembers(true));
}

/// The console: the log is the user's, and what stood in the temporary folder may be anybody's.
void complain(const QString &line) {
  qWarning("%s", line.toUtf8().constData());
}

}  // namespace

SavedState::SavedState(AppState &appState, DuplicateGroups &duplicateGroups)
    : state(appState), groups(duplicateGroups) {
  if (!QCoreApplication::instance()) return;
  applicationPath = QCoreApplication::applicationFilePath();
  toolPath = QCoreApplication::applicationDirPath() + QStringLiteral("/relaunch");
}

QString SavedState::statePath() {
  return platform().folders.temporary + QStringLiteral("/com.brinmoor.tallyfen.state.plist");
}

bool SavedState::writeState() {
  if (!isUsed) return false;
  const ProblemLists &lists = state.lists;
  const bool complete = !lists.mDuplicateSongDicts.isNull() && !lists.mInconsistentNameDicts.isNull() &&
                        !lists.mOrphanSongDicts.isNull() && !lists.mMissingSongDicts.isNull();
  if (!complete) {
    BMLog(
        "writeState nil dict: mDuplicateSongDicts:%p mInconsistentNameDicts:%p mOrphanSongDicts:%p "
        "mMissingSongDicts:%p",
        lists.mDuplicateSongDicts.identity(), lists.mInconsistentNameDicts.identity(),
        lists.mOrphanSongDicts.identity(), lists.mMissingSongDicts.identity());
    return false;
  }
  const Dictionary root = stateAsDictionary();
  MergeState &merge = state.merge;
  const qint32 completed = state.operation.mNumberOfCompletedItems;
  merge.mNumberOfNoProgressRestarts = completed == 0 ? merge.mNumberOfNoProgressRestarts + 1 : 0;
  const qint32 restarts = merge.mNumberOfNoProgressRestarts;
  BMLog("writeState mNumberOfCompletedItems:%d mNumberOfNoProgressRestarts:%d", completed, restarts);
  root.set(keys::mNumberOfNoProgressRestarts, restarts);
  if (restarts >= kMostNoProgressRestarts) {
    BMLog("Too many zero progress restarts (%d), will not restart.", restarts);
    return false;
  }
  return store(root);
}

Dictionary SavedState::stateAsDictionary() {
  const ProblemLists &lists = state.lists;
  const Dictionary root = Dictionary::make();
  const Array postponed = groups.duplicateSongDictsWithTopPostponed();
  root.set(keys::mDuplicateSongDicts, strippedList(state, lists.mDuplicateSongDicts, postponed));
  root.set(keys::mInconsistentNameDicts,
           strippedList(state, lists.mInconsistentNameDicts, lists.mInconsistentNameDicts));
  root.set(keys::mOrphanSongDicts, strippedList(state, lists.mOrphanSongDicts, lists.mOrphanSongDicts));
  root.set(keys::mMissingSongDicts, strippedList(state, lists.mMissingSongDicts, lists.mMissingSongDicts));
  root.set(keys::problemTabIndex, int(state.view.currentTab()));
  root.set(keys::mNumberCompletedBeforeRestart, state.merge.mNumberCompletedBeforeRestart);
  root.set(keys::mScriptLockedBeforeRestart, iTunesInterface::isLocked());
  return root;
}

bool SavedState::store(const Dictionary &root) {
  QString error;
  const QByteArray bytes = platform().propertyLists->write(root, SystemPropertyList::Format::Binary, &error);
  if (!error.isEmpty()) {
    BMLog("writeState error %@", error);
    return false;
  }
  if (bytes.isEmpty()) {
    BMLog("writeState nil data");
    return false;
  }
  if (!PrivateFile::write(statePath(), bytes, &error)) {
    BMLog("writeState error writing %d bytes to %@ (%@)", bytes.size(), statePath(), error);
    return false;
  }
  state.mIsRestarting = true;
  return true;
}

bool SavedState::readStateExists() const {
  return PrivateFile::exists(statePath());
}

bool SavedState::isStateUsable() const {
  QString problem;
  return isUsed && readStateExists() && savedLists(&problem);
}

bool SavedState::readState() {
  if (!isUsed || !readStateExists()) return false;
  QString problem;
  const std::optional<SavedLists> saved = savedLists(&problem);
  if (!problem.isEmpty()) complain(problem);
  if (!PrivateFile::remove(statePath())) BMLog("!! %@ cannot be removed", statePath());
  if (saved) takeOver(*saved);
  return saved.has_value();
}

std::optional<SavedLists> SavedState::savedLists(QString *problem) {
  QString error;
  const std::optional<PrivateFile> file = PrivateFile::read(statePath(), &error);
  if (!file) {
    *problem = QStringLiteral("[!] readState ignored: ") + error;
    return std::nullopt;
  }
  const auto elapsed = float(platform().clock->now().seconds - file->modified.seconds);
  if (!(elapsed > 0) || !(elapsed < kLongestAgeSeconds)) {
    *problem = formatText(QStringLiteral("[!] readState %.1f elapsed, ignored"), {double(elapsed)});
    return std::nullopt;
  }
  if (file->bytes.isEmpty()) return std::nullopt;
  const Value root = platform().propertyLists->parse(file->bytes, &error);
  std::optional<SavedLists> saved = SavedLists::fromDictionary(root.toDictionary());
  if (!saved && error.isEmpty()) error = QStringLiteral("no state of a merge");
  if (error.isEmpty()) {
    saved->fileBytes = file->bytes.size();
    return saved;
  }
  *problem = formatText(QStringLiteral("[!] readState %ld bytes, %ld items: %@"),
                        {file->bytes.size(), root.toDictionary().size(), error});
  return std::nullopt;
}

void SavedState::takeOver(const SavedLists &saved) {
  for (const ProblemTab tab : kProblemTabs) {
    state.lists[tab] = saved.lists[tab];
    // Locks are made here, before any worker looks them up.
    state.threadLockForObject(state.lists[tab]);
  }
  if (saved.tab) state.view.selectTab(*saved.tab);
  state.merge.mNumberCompletedBeforeRestart = saved.completedBeforeRestart;
  state.merge.mScriptLockedBeforeRestart = saved.scriptLocked;
  state.merge.mNumberOfNoProgressRestarts = saved.noProgressRestarts;
  BMLog("[+] readState from %.1f KB: completedBeforeRestart:%d noProgressRestarts:%d scriptLocked:%d",
        double(saved.fileBytes) / 1024.0, saved.completedBeforeRestart, saved.noProgressRestarts,
        int(saved.scriptLocked));
}

void SavedState::recoverFromReadState() {
  if (revealAndMerge) revealAndMerge();
}

bool SavedState::prepareRelaunch() {
  const auto finished = [](bool success) {
    BMLog("prepareRelaunch success=%d", int(success));
    return success;
  };
  const QFileInfo program(toolPath);
  if (applicationPath.isEmpty() || !program.isFile() || !program.isExecutable()) {
    BMLog("prepareRelaunch could not find relaunch");
    return finished(false);
  }
  QProcess tool;
  tool.setProgram(toolPath);
  tool.setArguments({applicationPath, QString::number(QCoreApplication::applicationPid())});
  tool.setStandardInputFile(QProcess::nullDevice());
  tool.setStandardOutputFile(QProcess::nullDevice());
  tool.setStandardErrorFile(QProcess::nullDevice());
  qint64 identifier = 0;
  const bool runs = tool.startDetached(&identifier) && identifier > 0 && ::kill(pid_t(identifier), 0) == 0;
  if (!runs) {
    BMLog("prepareRelaunch %@ is not running", toolPath);
    return finished(false);
  }
  if (applicationWillTerminate) applicationWillTerminate();
  return finished(true);
}
