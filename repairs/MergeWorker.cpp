#include "repairs/MergeWorker.h"

#include "app/state/AppState.h"
#include "platform/Platform.h"
#include "repairs/GroupMerge.h"
#include "repairs/GroupRows.h"
#include "repairs/LibraryTotals.h"
#include "repairs/MergeReasons.h"
#include "repairs/MergeRooms.h"
#include "repairs/PlaylistMembers.h"
#include "repairs/PlaylistRepair.h"
#include "repairs/SharedPaths.h"
#include "support/BMLog.h"
#include "support/ExceptionText.h"
#include "values/Keys.h"

void MergeWorker::mergeMarkedDuplicatesThread() {
  bool hasReachedEnd = false;
  try {
    settings = MergeSettings::fromPreferences();
    const GroupRows groups(state);
    prepare(groups.highest());
    hasReachedEnd = walkGroups(groups) >= groups.highest();
    const bool isCompleted = hasReachedEnd || !state.operation.mCancelOperation;
    BMLog(isCompleted ? "Completed mergeMarkedDuplicatesThread" : "CANCELLED mergeMarkedDuplicatesThread");
    // The steps are over: the count may take its time, and a cancel, or another run, need not wait for it.
    journal.close();
    state.operation.mCurrentThreadAction = 0;
    prove();
  } catch (...) {
    const QString thrown = currentExceptionText();
    BMLog("EXCEPTION mergeMarkedDuplicatesThread %@", thrown);
    state.operation.setCancelOperationReason(mergeReasons::kError.toString() + u' ' + thrown);
  }
  journal.close();
  // From here on another run may begin.
  state.operation.mCurrentThreadAction = 0;
  state.operation.mCompletedOperation = hasReachedEnd;
}

void MergeWorker::prepare(qint64 highest) {
  BMLog(
      "mergeMarkedDuplicatesThread (%d-%d) noPlaylistSearch:%d noPlayedMerge:%d policy:%d "
      "unkept:%@",
      1, highest, int(settings.noIntelligentPlaylistHandling), int(settings.noMergePlayedInfo),
      settings.policy, settings.unkeptFolder);
  if (!settings.noMergePlayedInfo && !takeJournal()) return;
  if (!state.changes.updateJustPlaylists()) state.changes.forgetPlaylists();
  playlists.putBackCopies();
  // A later run of the same merge is measured against the first one's beginning.
  const MergeReport::Contents told = state.merge.report.contents();
  if (!told.before && told.groups.empty())
    state.merge.report.setBefore(libraryTotals::count([this] { return goesOnCounting(); }));
}

bool MergeWorker::takeJournal() {
  const std::optional<QString> problem = journal.open();
  problem ? state.operation.setCancelOperationReason(mergeReasons::kJournalError.toString() + *problem)
          : journal.settle();
  return !problem;
}

bool MergeWorker::goesOnCounting() {
  ++state.merge.countingSteps;
  return !state.operation.mCancelOperation;
}

void MergeWorker::prove() {
  libraryTotals::prove(state.merge.report, settings, [this] { return goesOnCounting(); });
}

qint64 MergeWorker::walkGroups(const GroupRows &groups) {
  if (groups.highest() < 1 || state.operation.mCancelOperation) return qMin(groups.highest(), qint64(0));
  const Array &rows = state.lists.mDuplicateSongDicts;
  SharedPaths sharedPaths(state.library.mMusicLibraryPaths, rows);
  QSet<QString> inLoadedPlaylists;
  if (!settings.noIntelligentPlaylistHandling)
    inLoadedPlaylists =
        listedTracksInPlaylists(rows, state.library.mMusicLibrary.value(keys::Playlists).toArray());
  PlaylistMembers playlistMembers;
  const MergeRooms rooms{state,  playlists,         journal,         sharedPaths,
                         groups, inLoadedPlaylists, playlistMembers, settings};
  qint64 reached = groups.highest();
  for (const qint64 number : groups.marked()) {
    mergeGroup(rooms, number);
    if (!state.operation.mCancelOperation) continue;
    reached = number;
    break;
  }
  platform().mainLoop->postAndWait([&] { sharedPaths.takeGoneFrom(state.library.mMusicLibraryPaths); });
  return reached;
}

void MergeWorker::mergeGroup(const MergeRooms &rooms, qint64 number) {
  try {
    GroupMerge(rooms, rooms.groups.rowsOf(number)).run();
  } catch (...) {
    const QString thrown = currentExceptionText();
    BMLog("EXCEPTION merge %@ for group %d: %@", thrown, number, state.operation.currentActionTitle());
    rooms.fail({}, thrown);
  }
}
