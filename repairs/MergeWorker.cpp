#include "repairs/MergeWorker.h"

#include <algorithm>

#include "app/state/AppState.h"
#include "repairs/GroupMerge.h"
#include "repairs/LibraryTotals.h"
#include "repairs/PlaylistRepair.h"
#include "repairs/SharedPaths.h"
#include "support/BMLog.h"
#include "values/Keys.h"

void MergeWorker::mergeMarkedDuplicatesThread() {
  settings = MergeSettings::fromPreferences();
  const qint64 highest = highestGroup();
  prepare(highest);
  const bool hasReachedEnd = walkGroups(highest) >= highest;
  const bool isCompleted = hasReachedEnd || !state.operation.mCancelOperation;
  libraryTotals::prove(state.merge.report, settings);
  BMLog(isCompleted ? "Completed mergeMarkedDuplicatesThread" : "CANCELLED mergeMarkedDuplicatesThread");
  // From here on another run may begin.
  state.operation.mCurrentThreadAction = 0;
  state.operation.mCompletedOperation = hasReachedEnd;
}

qint64 MergeWorker::highestGroup() {
  const Array &list = state.lists.mDuplicateSongDicts;
  const ObjectLock lock = state.threadLockForObject(list);
  const std::lock_guard held(*lock);
  return list.isEmpty() ? 0 : list.at(list.size() - 1).toDictionary().value(keys::DupeGroup).toInteger();
}

void MergeWorker::prepare(qint64 highest) {
  BMLog(
      "mergeMarkedDuplicatesThread (%d-%d) noPlaylistSearch:%d noPlayedMerge:%d policy:%d "
      "unkept:%@",
      1, highest, int(settings.noIntelligentPlaylistHandling), int(settings.noMergePlayedInfo),
      settings.policy, settings.unkeptFolder);
  if (!state.changes.updateJustPlaylists()) state.changes.forgetPlaylists();
  playlists.putBackCopies();
  if (!settings.noMergePlayedInfo) journal.settle();
  // A later run of the same merge is measured against the first one's beginning.
  if (!state.merge.report.contents().before) state.merge.report.setBefore(libraryTotals::count());
}

qint64 MergeWorker::walkGroups(qint64 highest) {
  if (highest < 1 || state.operation.mCancelOperation) return highest < 1 ? highest : 0;
  SharedPaths sharedPaths(state.library.mMusicLibraryPaths);
  const GroupMerge::Rooms rooms{state, playlists, journal, sharedPaths, settings};
  for (qint64 number = 1;; ++number) {
    GroupMerge(rooms, rowsOfGroup(number)).run();
    if (number == highest || state.operation.mCancelOperation) return number;
  }
}

std::vector<Dictionary> MergeWorker::rowsOfGroup(qint64 number) {
  const Array &list = state.lists.mDuplicateSongDicts;
  const ObjectLock lock = state.threadLockForObject(list);
  const std::lock_guard held(*lock);
  std::vector<Dictionary> rows;
  for (qsizetype row = list.size() - 1; row >= 0; --row) {
    const Dictionary &candidate = list.at(row).toDictionary();
    if (candidate.value(keys::DupeGroup).toInteger() == number) rows.push_back(candidate);
  }
  std::reverse(rows.begin(), rows.end());
  return rows;
}
