#include "repairs/MergeEngine.h"

#include <QDir>
#include <QFileInfo>

#include "app/state/AppState.h"
#include "app/state/LocalizedAlert.h"
#include "app/state/Operation.h"
#include "bridge/LocalizedMessage.h"
#include "platform/Platform.h"
#include "repairs/MergeSupervisor.h"
#include "repairs/MergeWorker.h"
#include "repairs/PlaylistRepair.h"
#include "support/BMLog.h"
#include "support/Preferences.h"
#include "support/SizeText.h"
#include "values/Keys.h"

namespace {

/// The button of a question that ends the command; all of them have two, this one first.
constexpr int kStop = 0;

Alert warning(const QString &name, const QString &message, const QStringList &buttons) {
  QStringList buttonKeys;
  for (const QString &button : buttons) buttonKeys.append(name + button + QStringLiteral("Button"));
  return localizedAlert(name + QStringLiteral("Title"), message, buttonKeys, true);
}

}  // namespace

MergeEngine::MergeEngine(AppState &appState, Operation &currentOperation, PlaylistRepair &playlistRepair)
    : state(appState), operation(currentOperation), playlists(playlistRepair) {}

MergeEngine::~MergeEngine() = default;

void MergeEngine::mergeMarkedDuplicates() {
  if (operation.isBusy()) return;
  if (haveUnkeptFolderPathProblem()) {
    state.merge.mMergeAfterUnkeptFolderChosen = true;
    changedMergeDupeUnkeptAction();
    return;
  }
  ProblemView &view = state.view;
  view.setProgressText(localizedMessage(QStringLiteral("GetPlaylistInfoBeforeMerge")));
  view.setProgressQuote(localizedMessage(QStringLiteral("QuoteMergeDupes")));
  view.setProgressSubText({});
  view.setProgressIndeterminate(true);
  view.setCancelEnabled(false);
  state.merge.mNumberCompletedBeforeRestart = 0;
  if (!state.merge.mGoesOnAfterStall) state.merge.report.clear();
  const qint32 longest = playlists.maximumUserPlaylistTracks();
  BMLog("maximumUserPlaylistTracks = %d (warn threshold %d, huge threshold %ld)", longest,
        PlaylistRepair::kWarnTracks, qint64(PlaylistRepair::kHugeTracks));
  const MergePlan plan = makeMergePlan(state, MergeSettings::fromPreferences());
  const bool isConfirmed = plan.settings.noIntelligentPlaylistHandling || confirmPlaylists(plan, longest);
  view.setCancelEnabled(true);
  if (!isConfirmed) return giveUp();
  view.setProgressText({});
  if (plan.settings.is(UnkeptPolicy::Trash) && !prefs::isTrue(prefs::noWarnAboutUnkeptTrash)) {
    operation.progressSheet().endProgressSheetImmediately();
    warnAboutTrash(plan);
  } else {
    beginMergeMarkedDuplicates();
  }
}

void MergeEngine::giveUp() {
  if (std::exchange(state.merge.mGoesOnAfterStall, false)) state.view.mergeDidEnd();
}

bool MergeEngine::confirmPlaylists(const MergePlan &plan, qint32 longest) {
  const bool areFound = plan.playlistsAreKnown && playlists.canFindPlaylists();
  const bool mayLose =
      !areFound && std::any_of(plan.groups.begin(), plan.groups.end(),
                               [](const GroupPlan &group) { return !group.playlists.empty(); });
  if (mayLose && !confirmUnknownPlaylists()) return false;
  state.merge.mMergesWithoutPlaylists = mayLose;
  const QHash<QString, QString> huge =
      playlists.hugePlaylistInfoUsingApplescript(!state.merge.mScriptLockedBeforeRestart);
  if (!huge.isEmpty()) return confirmHugePlaylists(huge);
  const bool isLong = longest > PlaylistRepair::kWarnTracks;
  return !isLong || prefs::isTrue(prefs::noWarnBigPlaylists) || confirmLongPlaylists(longest);
}

int MergeEngine::ask(const Alert &alert) {
  operation.progressSheet().endProgressSheetImmediately();
  return state.view.runAlert(alert);
}

bool MergeEngine::confirmUnknownPlaylists() {
  const QString name = QStringLiteral("PlaylistsUnknown");
  Alert alert = warning(name, localizedMessage(name + QStringLiteral("Message")),
                        {QStringLiteral("Cancel"), QStringLiteral("Proceed")});
  alert.safeButton = kStop;
  return ask(alert) != kStop;
}

bool MergeEngine::confirmHugePlaylists(const QHash<QString, QString> &huge) {
  QStringList names = huge.values();
  names.sort(Qt::CaseInsensitive);
  const QString name = QStringLiteral("HugePlaylistWarning");
  Alert alert = warning(
      name,
      localizedMessage(name + QStringLiteral("Message"), PlaylistRepair::kHugeTracks, names.join(u'\n')),
      {QStringLiteral("Cancel"), QStringLiteral("Proceed")});
  alert.safeButton = kStop;
  return ask(alert) != kStop;
}

bool MergeEngine::confirmLongPlaylists(qint32 longest) {
  const QString name = QStringLiteral("PlaylistSizeWarning");
  Alert alert = warning(name, localizedMessage(name + QStringLiteral("Message"), longest),
                        {QStringLiteral("Cancel"), QStringLiteral("Proceed")});
  alert.critical = false;
  alert.safeButton = kStop;
  alert.suppression = localizedMessage(QStringLiteral("PlaylistSizeWarningDoNotWarn"));
  alert.suppressionPreference = prefs::noWarnBigPlaylists;
  if (ask(alert) != kStop) return true;
  prefs::remove(prefs::noWarnBigPlaylists);
  return false;
}

void MergeEngine::warnAboutTrash(const MergePlan &plan) {
  const QString name = QStringLiteral("MergeTrashWarning");
  Alert alert = warning(name,
                        localizedMessage(name + QStringLiteral("Message"), qint64(plan.groups.size()),
                                         plan.unkeptFiles(), sizeText(plan.unkeptBytes())),
                        {QStringLiteral("Accept"), QStringLiteral("Cancel")});
  alert.critical = false;
  alert.suppression = localizedMessage(QStringLiteral("MergeTrashWarningDoNotWarn"));
  alert.suppressionPreference = prefs::noWarnAboutUnkeptTrash;
  const MainLoop::Task accept = tasks.guarded([this] { mergeTrashAccept(); });
  const MainLoop::Task cancel = tasks.guarded([this] { mergeTrashCancel(); });
  state.view.beginSheet(alert, [accept, cancel](int button) { button == 0 ? accept() : cancel(); });
}

MergeEngine::Work MergeEngine::workOfList() const {
  struct Group {
    qsizetype firstRow = 0, rows = 0;
    bool hasInfo = false, hasAudio = false;
  };
  QHash<qint64, Group> groups;
  const Array &list = state.lists.mDuplicateSongDicts;
  for (qsizetype place = 0; place < list.size(); ++place) {
    const Dictionary &row = list.at(place).toDictionary();
    Group &group = groups[row.value(keys::DupeGroup).toInteger()];
    if (group.rows++ == 0) group.firstRow = place;
    group.hasInfo |= row.value(keys::markInfo).toBool();
    group.hasAudio |= row.value(keys::markAudio).toBool();
  }
  Work work;
  for (const Group &group : groups) {
    if (!group.hasInfo || !group.hasAudio) continue;
    work.unkeptRows += group.rows - 1;
    if (!work.firstRow || group.firstRow < *work.firstRow) work.firstRow = group.firstRow;
  }
  return work;
}

void MergeEngine::scrollTo(const Work &work) {
  if (!work.firstRow) return;
  state.view.scrollToTop(ProblemTab::Duplicates, state.lists.mDuplicateSongDicts.size() - 1);
  state.view.scrollToTop(ProblemTab::Duplicates, *work.firstRow);
}

void MergeEngine::beginMergeMarkedDuplicates() {
  const double begin = platform().clock->now().seconds;
  const auto seconds = [begin] { return platform().clock->now().seconds - begin; };
  operation.reserve();
  // From here on the end of the run is the end of the merge.
  state.merge.mGoesOnAfterStall = false;
  runSettings = MergeSettings::fromPreferences();
  state.view.rememberSelection();
  const Work work = workOfList();
  scrollTo(work);
  const qint32 before = state.merge.mNumberCompletedBeforeRestart;
  BMLog("beginMergeMarkedDuplicates %d (%d previously finished) in %.2f secs", work.unkeptRows, before,
        seconds());
  state.operation.mLastCompletedCount = 0;
  state.merge.lastProgress = platform().clock->now();
  auto run = std::make_shared<MergeWorker>(state, playlists);
  worker = run;

  OperationPlan plan;
  plan.quote = localizedMessage(QStringLiteral("QuoteMergeDupes"));
  plan.maximum = double(before) + double(work.unkeptRows);
  plan.tickSeconds = 0.5;
  plan.update = [this] {
    if (supervisor) supervisor->updateMergeMarkedDuplicatesProgress();
  };
  plan.beforeWorkers = [this] { state.view.validateProblemUI(); };
  plan.workers = {{QStringLiteral("mergeMarkedDuplicatesThread"),
                   [owned = std::move(run)] { owned->mergeMarkedDuplicatesThread(); }}};
  state.view.setProgressIndeterminate(false);
  operation.start(plan);
}

bool MergeEngine::haveUnkeptFolderPathProblem() const {
  if (prefs::integer(prefs::unkeptActionPolicy) != int(UnkeptPolicy::Folder)) return false;
  const QFileInfo folder(prefs::text(prefs::unkeptPath));
  return folder.filePath().isEmpty() || !folder.isDir() || !folder.isReadable() || !folder.isExecutable();
}

void MergeEngine::changedMergeDupeUnkeptAction() {
  if (!haveUnkeptFolderPathProblem()) return;
  chooseUnkeptPanelDidEnd(state.view.chooseFolder(localizedMessage(QStringLiteral("ChooseUnkeptDirMessage")),
                                                  prefs::text(prefs::unkeptPath)));
}

void MergeEngine::chooseUnkeptPanelDidEnd(const QString &folder) {
  const bool goesOn = state.merge.mMergeAfterUnkeptFolderChosen;
  state.merge.mMergeAfterUnkeptFolderChosen = false;
  if (folder.isEmpty()) return goesOn ? giveUp() : void();
  prefs::set(prefs::unkeptPath, folder);
  if (goesOn) platform().mainLoop->post(tasks.guarded([this] { mergeMarkedDuplicates(); }));
}
