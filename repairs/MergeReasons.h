#pragma once

#include <QString>

#include "app/state/MergeState.h"
#include "app/state/ProblemView.h"

/// Why a merge stopped, as its worker names it in the operation's state, and how the steps of the playlist
/// repair say that they failed.
namespace mergeReasons {

/// A playlist holds tracks that cannot be put into a new one; the details follow.
inline constexpr QStringView kBroken = u"broken:";
/// A script failed; its own words follow.
inline constexpr QStringView kError = u"error:";
/// The folder for unkept files takes no copy; the system's words follow. No script has failed, and the words
/// of a slow disk are none to try again for.
inline constexpr QStringView kFolderError = u"error: folder: ";
/// Plays cannot be noted; why not follows, in words for the user.
inline constexpr QStringView kJournalError = u"error: journal: ";
/// Of a script that gave no answer in time, anywhere in the reason.
inline constexpr QStringView kTimedOut = u"timed out";
/// A file that is to stay is gone, or one cannot be deleted; its path follows.
inline constexpr QStringView kMissingError = u"missingError:";
inline constexpr QStringView kDeleteError = u"deleteError:";
/// A file could be deleted, but not be trashed.
inline constexpr QStringView kTrashError = u"trashError";

/// True for the answer of a step of the playlist repair that failed.
bool isFailure(QStringView answer);
/// The reason about a file; a null path is told as such.
QString aboutFile(QStringView kind, const QString &path);

}  // namespace mergeReasons

/// What is done about the reason for which a merge stopped.
enum class MergeReaction {
  /// The user is told.
  Sheet,
  /// The playlist's songs are noted, and the user is told of them.
  BrokenPlaylist,
  /// The user is told, and the numbers of the tabs wait for the next operation.
  TrashFailure,
  /// Another run, in silence.
  Retry,
};

/// The reaction to a reason, by the first rule that applies.
MergeReaction reactionToReason(const QString &reason, bool tracksAreMissing);

/// The message about a reason whose reaction is a sheet or the failure of the trash.
Alert alertAboutReason(const QString &reason, bool tracksAreMissing);

/// The same reason as the report of the merge has it, in one line. `details` is what a "broken:" text tells,
/// `title` the group that was in work.
MergeFailure failureAboutReason(const QString &reason, bool tracksAreMissing, const QString &title,
                                const Dictionary &details);

/// The message about a playlist that cannot be built anew, from what its "broken:" text tells; null for
/// nothing. Long lists are cut.
Alert alertAboutBrokenPlaylist(const Dictionary &details);
