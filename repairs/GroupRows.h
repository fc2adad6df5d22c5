#pragma once

#include <vector>

#include "values/Value.h"

struct AppState;

/// The groups of the list of duplicates while a run merges them: which take part, the rows of each, and their
/// way out of the list. One look at all rows when the run begins saves one for each group: where the list is
/// in the order of its numbers, as a scan leaves it, a group is found by halving, and rows that leave do not
/// change that. Only the run itself changes the list meanwhile. The run's thread; takes the list's lock.
class GroupRows {
 public:
  /// Looks at all rows. The state outlives it.
  explicit GroupRows(AppState &appState);

  /// The number of the last row; 0 without rows.
  qint64 highest() const { return mHighest; }
  /// The numbers from 1 to the highest of the groups that have both marks, ascending.
  const std::vector<qint64> &marked() const { return mMarked; }
  /// The rows of a group that are still listed, in the order of the table.
  std::vector<Dictionary> rowsOf(qint64 number) const;
  /// Takes this very row from the list: where it stood, or `kNotFound`.
  qint64 remove(const Dictionary &row) const;

 private:
  /// Where the rows of a group begin, or the end of the list; of a list in order.
  qsizetype placeOf(const Array &list, qint64 number) const;

  AppState &state;
  std::vector<qint64> mMarked;
  qint64 mHighest = 0;
  bool isInOrder = true;
};
