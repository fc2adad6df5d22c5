#pragma once

#include "values/Value.h"

struct AppState;

/// What `declareNoDuplicates` did.
struct DeclaredGroups {
  /// Declarations added, one for each group with two or more of the rows.
  int declarations = 0;
  /// A whole group left the list, so that the colours no longer alternate.
  bool needsStripes = false;
};

/// Adds the rows of each group to the store of declarations, the last group of the list first, and takes from
/// `mDuplicateSongDicts` every row that is declared no duplicate of its group's first row; then a first row
/// that is left alone. The others stay until the next scan, which compares with the first row only too.
/// Numbers of groups that stay do not change. Main thread, while no scan runs.
DeclaredGroups declareNoDuplicates(AppState &state, const Array &rows);
