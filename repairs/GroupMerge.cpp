#include "repairs/GroupMerge.h"

#include <algorithm>

#include "app/state/AppState.h"
#include "app/state/Commands.h"
#include "bridge/LocalizedMessage.h"
#include "bridge/iTunesInterface.h"
#include "repairs/ArtworkCopy.h"
#include "repairs/FileIdentity.h"
#include "repairs/GroupRows.h"
#include "repairs/MergeJournal.h"
#include "repairs/MergeReasons.h"
#include "repairs/PlaylistMembers.h"
#include "repairs/PlaylistRepair.h"
#include "repairs/RowDisposal.h"
#include "support/BMLog.h"
#include "values/Keys.h"
#include "values/NotFound.h"

GroupMerge::GroupMerge(const MergeRooms &theRooms, const std::vector<Dictionary> &rows)
    : rooms(theRooms), plan(planOfGroup(rows, theRooms.settings)), left(rows) {}

void GroupMerge::begin(MergeAction action) const {
  rooms.state.operation.mCurrentThreadAction = qint32(action);
}

void GroupMerge::run() {
  if (!plan.isMarked()) return;
  rooms.state.operation.setCurrentActionTitle(plan.title);
  if (plan.missingPath) {
    rooms.state.operation.setCancelOperationReason(
        mergeReasons::aboutFile(mergeReasons::kMissingError, *plan.missingPath));
    return;
  }
  keptPath = pathOf(plan.audioRow);
  sizeBefore = fileIdentity::sizeOfFile(keptPath);
  try {
    walk();
  } catch (...) {
    tell();
    throw;
  }
  tell();
}

void GroupMerge::walk() {
  mergePlayed();
  copyInformation();
  const bool mayGoOn = replaceInPlaylists();
  // The copied information may have moved the file.
  keptPath = pathOf(plan.audioRow);
  if (mayGoOn) dealWithRows();
  dropRemainder();
}

void GroupMerge::tell() {
  report.title = plan.title;
  report.keptPID = pidOf(plan.audioRow);
  report.infoPID = pidOf(plan.infoRow);
  report.keptPath = keptPath;
  report.keptGrowth = fileIdentity::sizeOfFile(keptPath) - sizeBefore;
  report.complete = report.unkept.size() == plan.unkept.size() && left.size() <= 1;
  rooms.state.merge.report.addGroup(report);
}

void GroupMerge::mergePlayed() {
  if (rooms.isCancelled() || rooms.settings.noMergePlayedInfo) return;
  begin(MergeAction::MergingPlayed);
  const QString keptPID = pidOf(plan.audioRow);
  for (const Unkept &unkept : plan.unkept) {
    if (rooms.isCancelled()) return;
    if (unkept.pid == keptPID) continue;
    const std::optional<QString> problem = rooms.journal.mergePlayed(unkept.pid, keptPID);
    if (!problem) continue;
    BMLog("playmerge %@ for %@", *problem, keptPath);
    openPlays.insert(unkept.pid);
  }
}

void GroupMerge::copyInformation() {
  if (rooms.isCancelled() || !plan.copiesInformation()) return;
  begin(MergeAction::CopyingInformation);
  const QString infoPath = pathOf(plan.infoRow);
  if (!infoPath.isEmpty() && !keptPath.isEmpty() && infoPath != keptPath)
    copyArtworkFromSongAtPathToSongAtPathReplace(infoPath, keptPath, true);
  const std::optional<QString> problem =
      iTunesInterface::doCopyInfoFromTrackPIDToTrackPid(pidOf(plan.infoRow), pidOf(plan.audioRow));
  if (problem) BMLog("info copy %@ for %@", *problem, keptPath);
  rooms.state.changes.didMoveTrackWithDict(plan.audioRow);
}

bool GroupMerge::areInPlaylists(const QStringList &pids) const {
  return rooms.playlistMembers.containASongWithPID(rooms.state.changes.playlists(), pids) ||
         std::any_of(pids.begin(), pids.end(),
                     [this](const QString &pid) { return rooms.inLoadedPlaylists.contains(pid); });
}

bool GroupMerge::replaceInPlaylists() {
  if (rooms.isCancelled() || rooms.settings.noIntelligentPlaylistHandling) return true;
  begin(MergeAction::ReplacingInPlaylists);
  const QStringList pids = plan.unkeptPIDs();
  if (pids.isEmpty()) return true;
  LibraryChanges &changes = rooms.state.changes;
  const bool areInSome = areInPlaylists(pids);
  if (!areInSome && !changes.freshPlaylists().isEmpty()) return true;
  const bool mustFind = areInSome && !rooms.state.merge.mMergesWithoutPlaylists;
  if (mustFind && !rooms.playlists.canFindPlaylists()) return leaveInPlaylists();
  const std::optional<QString> result =
      rooms.playlists.doPlaylistReplaceOfSongPIDsWithSongPID(pids, pidOf(plan.audioRow));
  const bool haveTaken = havePlaylistsTaken(result.value_or(QString()));
  if (result && mergeReasons::isFailure(*result)) {
    BMLog("doPlaylistReplaceOfSongPIDs returned '%@'", *result);
    rooms.state.operation.setCancelOperationReason(*result);
    return false;
  }
  if (mustFind && !rooms.playlists.lastReplaced().wereFound) return leaveInPlaylists();
  changes.forgetPlaylists();
  changes.updateJustPlaylists();
  return haveTaken;
}

bool GroupMerge::leaveInPlaylists() const {
  BMLog("!! merge leaves a group as it is, as its playlists cannot be found: %@", keptPath);
  rooms.fail(keptPath, localizedMessage(QStringLiteral("MergePlaylistsNotSearched")));
  return false;
}

bool GroupMerge::havePlaylistsTaken(const QString &result) {
  const PlaylistRepair::Replaced &done = rooms.playlists.lastReplaced();
  for (const auto *const playlists : {&done.rebuilt, &done.appended}) {
    for (const PlaylistRepair::Replaced::Playlist &playlist : *playlists)
      report.playlists.append(playlist.name);
  }
  report.wasAppended |= !done.appended.empty();
  for (const PlaylistRepair::Replaced::Failure &failure : done.failed) {
    // What stops the run is told by its reason.
    if (failure.reason != result) rooms.fail(keptPath, failure.playlist.name + u": "_qs + failure.reason);
  }
  return done.failed.empty();
}

void GroupMerge::dealWithRows() {
  RowDisposal disposal(rooms, plan, keptPath, openPlays);
  if (!disposal.mayBegin()) return;
  for (const Unkept &unkept : plan.unkept) {
    begin(MergeAction::DealingWithRows);
    if (rooms.isCancelled()) continue;
    MergedGroup::Unkept told;
    const bool isDone = disposal.disposeOf(unkept, told);
    if (isDone || told.leftLibrary) report.unkept.push_back(told);
    if (isDone && !rooms.isCancelled()) keepBooks(unkept);
  }
}

void GroupMerge::keepBooks(const Unkept &unkept) {
  AppState &state = rooms.state;
  state.changes.modifiedLibrary();
  std::erase_if(left, [&](const Dictionary &row) { return row.isSame(unkept.row); });
  if (unkept.row.isSame(plan.infoRow)) {
    // A group that is stopped here has both marks, and can be merged again.
    const ObjectLock lock = state.threadLockForObject(state.lists.mDuplicateSongDicts);
    const std::lock_guard held(*lock);
    plan.audioRow.set(keys::markInfo, true);
  }
  rooms.groups.remove(unkept.row);
  state.merge.mNumberOfNoProgressRestarts = 0;
  ++state.operation.mNumberOfCompletedItems;
}

void GroupMerge::dropRemainder() const {
  if (rooms.isCancelled() || left.size() != 1) return;
  const qint64 place = rooms.groups.remove(left.front());
  if (place == kNotFound) return BMLog("mergeMarked unfound remainder");
  rooms.state.commands->setStripesForDupesFromIndex(qint32(place));
}
