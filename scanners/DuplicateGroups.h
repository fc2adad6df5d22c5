#pragma once

#include <QSet>
#include <optional>
#include <vector>

#include "support/TaskGuard.h"
#include "values/Value.h"

struct AppState;

/// What is done with the rows of `mDuplicateSongDicts` outside the scan. Main thread, while no scan runs. The
/// rows of a group stand next to each other.
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
  /// marks. True if other cells than the clicked one may show something new. A cleared mark repairs nothing;
  /// nor does a row that the list does not have.
  bool validateDuplicatesForIdentifierPreferringRowNewValue(Key identifier, qint32 row,
                                                            const Value &newValue);

  /// The groups that two or more selected rows belong to, or nothing for fewer rows. With `expand` the
  /// selection grows to all their rows.
  std::optional<QSet<qint64>> selectedDupeGroupsExpand(bool expand);

  /// The command: declares the selected rows of each group not to be duplicates, after asking, and takes
  /// what is no duplicate any more from the list. Refused unless two selected rows share a group.
  void ignoreSelectedDuplicates();
  /// The same for these rows of the list without asking: each group's rows are declared no duplicates of one
  /// another. Rows that the list does not have, and those alone in their group, are passed over. Restores the
  /// remembered selection. Answers the number of declarations made.
  int ignoreRows(const Array &rows);

 private:
  void declareSelectedRows();
  bool anyGroupHasTwoSelectedRows() const;

  AppState &state;
  TaskGuard tasks;
};
