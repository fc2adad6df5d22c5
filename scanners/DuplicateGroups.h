#pragma once

#include <QSet>
#include <optional>

#include "values/Value.h"

struct AppState;

/// What is done with the rows of `mDuplicateSongDicts` outside the scan. Main thread, while no scan runs.
class DuplicateGroups {
 public:
  explicit DuplicateGroups(AppState &appState) : state(appState) {}

  /// Gives adjacent groups alternating `UIStripe`s, from a row on to the end. A negative index is 0; one past
  /// the end does nothing.
  void setStripesForDupesFromIndex(qint32 index);

  /// The rows with the first group behind all others under a new number, for the saved state: a merge that
  /// got stuck on it tries it last. The rows are renumbered in place, the list keeps its order.
  Array duplicateSongDictsWithTopPostponed();

  /// After a mark has been stored in a row: takes it from the group's other rows, and completes the pair of
  /// marks. True if other cells than the clicked one may show something new. A cleared mark repairs nothing.
  bool validateDuplicatesForIdentifierPreferringRowNewValue(Key identifier, qint32 row,
                                                            const Value &newValue);

  /// The groups that two or more selected rows belong to, or nothing for fewer rows. With `expand` the
  /// selection grows to all their rows.
  std::optional<QSet<qint64>> selectedDupeGroupsExpand(bool expand);

  /// The command: declares the selected rows of each group not to be duplicates, after asking, and takes
  /// what is no duplicate any more from the list. Refused unless two selected rows share a group.
  void ignoreSelectedDuplicates();
  /// Declares one set of rows of the list not to be duplicates of one another, without asking.
  void ignoreRows(const Array &rows);

 private:
  void ignoreSelectedDuplicatesSheetDidEnd(int button);

  AppState &state;
};
