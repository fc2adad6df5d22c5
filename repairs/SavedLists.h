#pragma once

#include <optional>

#include "app/state/AppState.h"

/// What a state file says, checked: fit to be shown and merged from.
struct SavedLists {
  ProblemLists lists;
  /// The selected tab; nothing if the file does not tell or names none.
  std::optional<ProblemTab> tab;
  qint32 completedBeforeRestart = 0;
  qint32 noProgressRestarts = 0;
  bool scriptLocked = false;
  /// How long the file was.
  qsizetype fileBytes = 0;

  /// Reads a state. Nothing for one that cannot be ours: a list is absent or none, a row is no dictionary, or
  /// the groups of the duplicates do not stand together under numbers of their own. Keys that are not known
  /// are passed over; counters that make no sense are 0. Shares its containers with the root.
  static std::optional<SavedLists> fromDictionary(const Dictionary &root);
};
