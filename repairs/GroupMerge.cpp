#include "repairs/GroupMerge.h"

#include <QFile>

#include "app/state/AppState.h"
#include "app/state/Commands.h"
#include "bridge/LocalizedMessage.h"
#include "bridge/iTunesInterface.h"
#include "repairs/ArtworkCopy.h"
#include "repairs/FileIdentity.h"
#include "repairs/MergeJournal.h"
#include "repairs/MergeReasons.h"
#include "repairs/PlaylistRepair.h"
#include "repairs/SharedPaths.h"
#include "repairs/UnkeptFiles.h"
#include "support/BMLog.h"
#include "support/Copy.h"
#include "values/Keys.h"

namespace {

QString pidOf(const Dictionary &row) {
  return row.value(keys::PersistentID).toText();
}

QString pathOf(const Dictionary &row) {
  return row.value(keys::Path).toText();
}

}  // namespace

GroupMerge::GroupMerge(const Rooms &theRooms, const std::vector<Dictionary> &rows)
    : rooms(theRooms), plan(planOfGroup(rows, theRooms.settings)), left(rows) {}

bool GroupMerge::isCancelled() const {
  return rooms.state.operation.mCancelOperation;
}

void GroupMerge::begin(MergeAction action) {
  rooms.state.operation.mCurrentThreadAction = qint32(action);
}

void GroupMerge::fail(const QString &path, const QString &reason) {
  rooms.state.merge.report.addFailure({plan.title, path, reason});
}

void GroupMerge::run() {
  if (!plan.isMarked()) return;
  report.title = plan.title;
  report.keptPID = pidOf(plan.audioRow);
  report.infoPID = pidOf(plan.infoRow);
  rooms.state.operation.setCurrentActionTitle(plan.title);
  if (plan.missingPath) {
    rooms.state.operation.setCancelOperationReason(
        mergeReasons::aboutFile(mergeReasons::kMissingError, *plan.missingPath));
    return;
  }
  keptPath = pathOf(plan.audioRow);
  const qint64 sizeBefore = fileIdentity::sizeOfFile(keptPath);
  mergePlayed();
  copyInformation();
  replaceInPlaylists();
  keptPath = pathOf(plan.audioRow);
  dealWithRows();
  dropRemainder();
  report.keptPath = keptPath;
  report.keptGrowth = fileIdentity::sizeOfFile(keptPath) - sizeBefore;
  report.complete = report.unkept.size() == plan.unkept.size() && left.size() <= 1;
  rooms.state.merge.report.addGroup(report);
}

void GroupMerge::mergePlayed() {
  if (isCancelled() || rooms.settings.noMergePlayedInfo) return;
  begin(MergeAction::MergingPlayed);
  for (const Unkept &unkept : plan.unkept) {
    const std::optional<QString> problem = rooms.journal.mergePlayed(unkept.pid, pidOf(plan.audioRow));
    if (problem) BMLog("playmerge %@ for %@", *problem, keptPath);
  }
}

void GroupMerge::copyInformation() {
  if (isCancelled() || !plan.copiesInformation()) return;
  begin(MergeAction::CopyingInformation);
  const QString infoPath = pathOf(plan.infoRow);
  if (!infoPath.isEmpty() && !keptPath.isEmpty() && infoPath != keptPath)
    copyArtworkFromSongAtPathToSongAtPathReplace(infoPath, keptPath, true);
  const std::optional<QString> problem =
      iTunesInterface::doCopyInfoFromTrackPIDToTrackPid(pidOf(plan.infoRow), pidOf(plan.audioRow));
  if (problem) BMLog("info copy %@ for %@", *problem, keptPath);
  rooms.state.changes.didMoveTrackWithDict(plan.audioRow);
}

void GroupMerge::replaceInPlaylists() {
  if (isCancelled() || rooms.settings.noIntelligentPlaylistHandling) return;
  begin(MergeAction::ReplacingInPlaylists);
  const QStringList pids = plan.unkeptPIDs();
  if (pids.isEmpty()) return;
  LibraryChanges &changes = rooms.state.changes;
  const Array fresh = changes.freshPlaylists();
  if (!fresh.isEmpty() && !PlaylistRepair::userPlaylistsContainASongWithPID(fresh, pids)) return;
  const std::optional<QString> result =
      rooms.playlists.doPlaylistReplaceOfSongPIDsWithSongPID(pids, pidOf(plan.audioRow));
  if (result && mergeReasons::isFailure(*result)) {
    BMLog("doPlaylistReplaceOfSongPIDs returned '%@'", *result);
    rooms.state.operation.setCancelOperationReason(*result);
    return;
  }
  notePlaylists(changes.playlists());
  changes.forgetPlaylists();
  changes.updateJustPlaylists();
}

void GroupMerge::notePlaylists(const Array &known) {
  if (isCancelled()) return;
  std::vector<GroupPlan> one{plan};
  addPlaylists(one, known);
  for (const GroupPlan::Playlist &playlist : one.front().playlists) {
    report.playlists.append(playlist.name);
    report.wasAppended |= playlist.entries >= PlaylistRepair::kHugeTracks;
  }
}

void GroupMerge::dealWithRows() {
  for (const Unkept &unkept : plan.unkept) {
    begin(MergeAction::DealingWithRows);
    if (isCancelled()) continue;
    dealWithRow(unkept);
  }
}

void GroupMerge::dealWithRow(const Unkept &unkept) {
  MergedGroup::Unkept told;
  told.pid = unkept.pid;
  told.path = unkept.path;
  told.bytes = unkept.bytes;
  const bool hadFile = fileIdentity::isFile(unkept.path);
  const bool isDone = disposeOf(unkept, told);
  const bool isNamed = unkept.path == keptPath || rooms.sharedPaths.isNamedByMoreThan(unkept.path, 0);
  told.leftLibrary = hadFile && ((told.removed && !isNamed) || !fileIdentity::isFile(unkept.path));
  if (isDone || told.leftLibrary) report.unkept.push_back(told);
  if (isDone && !isCancelled()) keepBooks(unkept);
}

bool GroupMerge::disposeOf(const Unkept &unkept, MergedGroup::Unkept &told) {
  if (rooms.settings.is(UnkeptPolicy::Playlist)) collect(unkept, told);
  if (!rooms.settings.is(UnkeptPolicy::Trash) && !rooms.settings.is(UnkeptPolicy::Folder)) {
    told.fate = UnkeptFate::Collected;
    return true;
  }
  if (!takeFileAway(unkept, told) || isCancelled()) return false;
  removeTrack(unkept, told);
  return true;
}

void GroupMerge::collect(const Unkept &unkept, MergedGroup::Unkept &told) {
  const std::optional<QString> problem = iTunesInterface::addTrackWithPIDToPlaylistNamedCreate(
      unkept.pid, localizedMessage(QStringLiteral("UnkeptPlaylist")), true);
  if (!problem) return;
  BMLog("merge unkept %@ for %@", *problem, told.path);
  fail(told.path, *problem);
}

bool GroupMerge::keptFileIsThere() {
  if (fileIdentity::isFile(keptPath)) return true;
  rooms.state.operation.setCancelOperationReason(
      mergeReasons::aboutFile(mergeReasons::kMissingError, keptPath));
  return false;
}

bool GroupMerge::isShared(const Unkept &unkept) const {
  if (fileIdentity::areSameFile(unkept.path, keptPath)) return true;
  int inGroup = 0;
  for (const Dictionary &row : left) inGroup += pathOf(row) == unkept.path;
  return rooms.sharedPaths.isNamedByMoreThan(unkept.path, inGroup);
}

bool GroupMerge::takeFileAway(const Unkept &unkept, MergedGroup::Unkept &told) {
  const QString &path = unkept.path;
  if (path.isEmpty()) {
    BMLog("didn't keep because of no path: %@", unkept.row);
    told.fate = UnkeptFate::NoPath;
    return true;
  }
  if (!keptFileIsThere()) return false;
  if (isShared(unkept)) {
    BMLog("Not trashing unkept song because location is the same as the kept song: %@", path);
    told.fate = UnkeptFate::Shared;
    return true;
  }
  if (!fileIdentity::isFile(path)) {
    BMLog("Not trashing unkept song because no file actually exists: %@", path);
    told.fate = UnkeptFate::Gone;
    return true;
  }
  if (rooms.settings.is(UnkeptPolicy::Folder)) return copyToFolder(unkept, told);
  const unkeptFiles::Outcome outcome = unkeptFiles::trashFile(path, rooms.settings.noStopForTrashFailure);
  told.fate = outcome.fate;
  if (!outcome.stopReason.isEmpty()) rooms.state.operation.setCancelOperationReason(outcome.stopReason);
  return outcome.stopReason.isEmpty();
}

bool GroupMerge::copyToFolder(const Unkept &unkept, MergedGroup::Unkept &told) {
  const unkeptFiles::FolderCopy copy =
      unkeptFiles::safelyCopyFileAtPathToFolder(unkept.path, rooms.settings.unkeptFolder);
  if (copy.path.isEmpty()) {
    // The file stays, and its track with it: the next merge finds both.
    BMLog("merge unkept not copied: %@", copy.error);
    fail(unkept.path, copy.error);
    return false;
  }
  told.newPath = copy.path;
  told.fate = copy.wasThere ? UnkeptFate::AlreadyInFolder : UnkeptFate::Moved;
  return true;
}

void GroupMerge::removeTrack(const Unkept &unkept, MergedGroup::Unkept &told) {
  if (!rooms.settings.noMergePlayedInfo) {
    const std::optional<QString> open = rooms.journal.mergeWhatIsOpen(unkept.pid);
    if (open) fail(unkept.path, *open);
  }
  const std::optional<QString> problem = iTunesInterface::removeSongWithPID(unkept.pid);
  told.removed = !problem;
  if (problem) {
    BMLog("merge delete %@ for %@", *problem, keptPath);
    fail(unkept.path, *problem);
  } else {
    rooms.sharedPaths.trackIsGone(unkept.path);
    if (!told.newPath.isEmpty() && keptFileIsThere() &&
        !unkeptFiles::deleteCopiedFile(unkept.path, told.newPath)) {
      BMLog("merge unkept not deleted, as it is not in the folder whole: %@", unkept.path);
      fail(unkept.path, localizedMessage(QStringLiteral("MergeCopyNotWhole"), told.newPath));
    }
  }
  rooms.state.changes.didRemoveTrackWithDict(unkept.row);
}

void GroupMerge::keepBooks(const Unkept &unkept) {
  AppState &state = rooms.state;
  state.changes.modifiedLibrary();
  std::erase_if(left, [&](const Dictionary &row) { return row.isSame(unkept.row); });
  const Array &list = state.lists.mDuplicateSongDicts;
  const ObjectLock lock = state.threadLockForObject(list);
  {
    const std::lock_guard held(*lock);
    const qint64 place = indexOfObjectWithPointer(list, unkept.row);
    if (place != kNotFound) list.removeAt(place);
  }
  ++state.operation.mNumberOfCompletedItems;
}

void GroupMerge::dropRemainder() {
  if (isCancelled() || left.size() != 1) return;
  AppState &state = rooms.state;
  const Array &list = state.lists.mDuplicateSongDicts;
  const ObjectLock lock = state.threadLockForObject(list);
  const std::lock_guard held(*lock);
  const qint64 place = indexOfObjectWithPointer(list, left.front());
  if (place == kNotFound) return BMLog("mergeMarked unfound remainder");
  list.removeAt(place);
  state.commands->setStripesForDupesFromIndex(qint32(place));
}
