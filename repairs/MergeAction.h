#pragma once

#include <QtGlobal>

/// The step that a merge's worker is in, as `mCurrentThreadAction` has it and as its text is numbered.
enum class MergeAction : qint32 {
  /// Between runs, and before the first step.
  None = 0,
  MergingPlayed = 1,
  CopyingInformation = 2,
  ReplacingInPlaylists = 3,
  DealingWithRows = 4,
};
