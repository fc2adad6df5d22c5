#include "repairs/RowDisposal.h"

#include "app/state/AppState.h"
#include "bridge/LocalizedMessage.h"
#include "bridge/iTunesInterface.h"
#include "repairs/FileIdentity.h"
#include "repairs/MergeJournal.h"
#include "repairs/MergeReasons.h"
#include "repairs/SharedPaths.h"
#include "repairs/UnkeptFiles.h"
#include "support/BMLog.h"

RowDisposal::RowDisposal(const MergeRooms &theRooms, const GroupPlan &groupPlan, QString pathOfKept,
                         QSet<QString> tracksWithOpenPlays)
    : rooms(theRooms),
      plan(groupPlan),
      keptPath(std::move(pathOfKept)),
      keptPID(pidOf(groupPlan.audioRow)),
      openPlays(std::move(tracksWithOpenPlays)) {}

bool RowDisposal::mayBegin() const {
  // The merge of plays asks for the kept track with each of the others.
  if (!rooms.settings.removesTracks() || !rooms.settings.noMergePlayedInfo || rooms.isCancelled())
    return true;
  QString problem;
  if (iTunesInterface::playedCountsOfTracksWithPIDs(keptPID, keptPID, &problem)) return true;
  BMLog("!! merge finds no kept track %@ for %@", problem, keptPath);
  rooms.fail(keptPath, localizedMessage(QStringLiteral("MergeKeptTrackGone")));
  return false;
}

bool RowDisposal::disposeOf(const Unkept &unkept, MergedGroup::Unkept &told) {
  told.pid = unkept.pid;
  told.path = unkept.path;
  told.bytes = unkept.bytes;
  const bool hadFile = fileIdentity::isFile(unkept.path);
  const bool isDone = disposeOfTrack(unkept, told);
  if (!hadFile) return isDone;
  const bool isNamed =
      fileIdentity::areSameFile(unkept.path, keptPath) || rooms.sharedPaths.isNamedByMoreThan(unkept.path, 0);
  told.leftLibrary = (told.removed && !isNamed) || !fileIdentity::isFile(unkept.path);
  return isDone;
}

bool RowDisposal::disposeOfTrack(const Unkept &unkept, MergedGroup::Unkept &told) {
  if (rooms.settings.is(UnkeptPolicy::Playlist)) collect(unkept);
  if (!rooms.settings.removesTracks()) {
    told.fate = UnkeptFate::Collected;
    return true;
  }
  if (unkept.pid == keptPID) {
    BMLog("Not removing unkept song because it is the kept track: %@", unkept.row);
    told.fate = UnkeptFate::Shared;
    return true;
  }
  const bool isGone = openPlays.contains(unkept.pid) && hasLeftLibrary(unkept.pid);
  if (!isGone && !playsHaveGoneOver(unkept)) return false;
  if (!takeFileAway(unkept, told) || rooms.isCancelled()) return false;
  return removeTrack(unkept, isGone, told);
}

bool RowDisposal::removeTrack(const Unkept &unkept, bool isGone, MergedGroup::Unkept &told) const {
  const std::optional<QString> problem =
      isGone ? std::nullopt : iTunesInterface::removeSongWithPIDForCertain(unkept.pid);
  if (problem) BMLog("merge delete %@ for %@", *problem, keptPath);
  // An answer that was lost, or somebody else's removal, leaves no track either.
  if (problem && !hasLeftLibrary(unkept.pid)) {
    rooms.fail(unkept.path, *problem);
    // Whether the track is there nobody knows: the next merge finds out.
    if (iTunesInterface::mayHaveBeenDone(*problem)) return false;
  } else {
    told.removed = true;
    rooms.sharedPaths.trackIsGone(unkept.path);
    if (!told.newPath.isEmpty()) deleteCopied(unkept, told.newPath);
  }
  rooms.state.changes.didRemoveTrackWithDict(unkept.row);
  return true;
}

bool RowDisposal::hasLeftLibrary(const QString &pid) const {
  QString problem;
  if (pid.isEmpty() || iTunesInterface::playedCountsOfTracksWithPIDs(pid, pid, &problem)) return false;
  // The other one's answer shows that the fault is not the application's.
  return iTunesInterface::isNoSuchTrack(problem) &&
         iTunesInterface::playedCountsOfTracksWithPIDs(keptPID, keptPID, &problem);
}

void RowDisposal::collect(const Unkept &unkept) const {
  const std::optional<QString> problem = iTunesInterface::addTrackWithPIDToPlaylistNamedCreate(
      unkept.pid, localizedMessage(QStringLiteral("UnkeptPlaylist")), true);
  if (!problem) return;
  BMLog("merge unkept %@ for %@", *problem, unkept.path);
  rooms.fail(unkept.path, *problem);
}

bool RowDisposal::playsHaveGoneOver(const Unkept &unkept) {
  if (!openPlays.contains(unkept.pid)) return true;
  const std::optional<QString> problem = rooms.journal.mergePlayed(unkept.pid, keptPID);
  if (!problem) {
    openPlays.remove(unkept.pid);
    return true;
  }
  BMLog("playmerge %@ for %@", *problem, keptPath);
  rooms.fail(unkept.path, localizedMessage(QStringLiteral("MergePlaysStay"), *problem));
  return false;
}

bool RowDisposal::keptFileIsThere() const {
  if (fileIdentity::isFile(keptPath)) return true;
  rooms.state.operation.setCancelOperationReason(
      mergeReasons::aboutFile(mergeReasons::kMissingError, keptPath));
  return false;
}

bool RowDisposal::takeFileAway(const Unkept &unkept, MergedGroup::Unkept &told) const {
  const QString &path = unkept.path;
  if (path.isEmpty()) {
    BMLog("didn't keep because of no path: %@", unkept.row);
    told.fate = UnkeptFate::NoPath;
    return true;
  }
  if (!keptFileIsThere()) return false;
  told.fate = UnkeptFate::Shared;
  if (fileIdentity::areSameFile(path, keptPath)) {
    BMLog("Not trashing unkept song because location is the same as the kept song: %@", path);
    return true;
  }
  if (rooms.sharedPaths.isNamedByMoreThan(path, 1)) {
    BMLog("Not trashing unkept song because another track has the same location: %@", path);
    return true;
  }
  told.fate = UnkeptFate::Gone;
  if (!fileIdentity::isFile(path)) {
    BMLog("Not trashing unkept song because no file actually exists: %@", path);
    return true;
  }
  if (rooms.settings.is(UnkeptPolicy::Folder)) return copyToFolder(unkept, told);
  const unkeptFiles::Outcome outcome = unkeptFiles::trashFile(path, rooms.settings.noStopForTrashFailure);
  told.fate = outcome.fate;
  if (!outcome.stopReason.isEmpty()) rooms.state.operation.setCancelOperationReason(outcome.stopReason);
  return outcome.stopReason.isEmpty();
}

bool RowDisposal::copyToFolder(const Unkept &unkept, MergedGroup::Unkept &told) const {
  const unkeptFiles::FolderCopy copy =
      unkeptFiles::safelyCopyFileAtPathToFolder(unkept.path, rooms.settings.unkeptFolder);
  if (copy.path.isEmpty()) {
    // The file stays, and its track with it: the next merge finds both.
    BMLog("merge unkept not copied: %@", copy.error);
    if (copy.folderIsAtFault) {
      rooms.state.operation.setCancelOperationReason(mergeReasons::kFolderError.toString() + copy.error);
    } else {
      rooms.fail(unkept.path, copy.error);
    }
    return false;
  }
  told.newPath = copy.path;
  told.fate = copy.wasThere ? UnkeptFate::AlreadyInFolder : UnkeptFate::Moved;
  return true;
}

void RowDisposal::deleteCopied(const Unkept &unkept, const QString &copy) const {
  if (!keptFileIsThere() || unkeptFiles::deleteCopiedFile(unkept.path, copy)) return;
  BMLog("merge unkept not deleted, as it is not in the folder whole: %@", unkept.path);
  rooms.fail(unkept.path, localizedMessage(QStringLiteral("MergeCopyNotWhole"), copy));
}
