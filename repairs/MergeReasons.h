#pragma once

#include <QString>

#include "app/state/ProblemView.h"

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

/// The message about a playlist that cannot be built anew, from what its "broken:" text tells; null for
/// nothing. Long lists are cut.
Alert alertAboutBrokenPlaylist(const Dictionary &details);
