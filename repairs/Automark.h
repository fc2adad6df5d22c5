#pragma once

#include <optional>
#include <vector>

#include "repairs/AutomarkRules.h"

struct AppState;
class DuplicateGroups;

/// Chooses, for every group of duplicates, the row that gives the information and the row whose audio stays,
/// by the user's preferences. Main thread.
class Automark {
 public:
  /// Both outlive it.
  Automark(AppState &appState, DuplicateGroups &duplicateGroups);

  /// The command.
  void doAutomark();
  /// Marks every group, or with two or more rows selected the groups of the selection.
  void doAutomarkFromPreferences();
  /// Takes both marks from the selected rows if there are at least two, else from all rows.
  void doUnmark();

  /// Where a group stands in the list, with what was chosen.
  struct Choice {
    qsizetype firstRow = 0;
    qsizetype rowCount = 0;
    GroupMarks marks;
  };
  /// What the last run chose, in the order of the list.
  const std::vector<Choice> &lastChoices() const { return choices; }

 private:
  AppState &state;
  DuplicateGroups &groups;
  std::optional<FileKinds> kinds;
  std::vector<Choice> choices;
};
