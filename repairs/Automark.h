#pragma once

#include <QSet>
#include <optional>
#include <vector>

#include "app/library/FileKinds.h"
#include "repairs/AutomarkRow.h"
#include "repairs/AutomarkRules.h"
#include "repairs/GroupMarks.h"

struct AppState;
class DuplicateGroups;

/// Chooses, for every group of duplicates, the row that gives the information and the row whose audio stays,
/// by the user's preferences. Main thread, while nothing runs that works on the rows: takes no lock.
class Automark {
 public:
  /// Both outlive it.
  Automark(AppState &appState, DuplicateGroups &duplicateGroups);

  /// The command.
  void doAutomark();
  /// Marks every group, or with two or more rows selected the groups of the selection. Old marks go first:
  /// with a selection only those of its rows, so that a group can keep an old mark beside the new ones.
  void doAutomarkFromPreferences();
  /// The command: takes both marks from the selected rows if there are at least two, else from all rows.
  void doUnmark();

  /// Where a group stands in the list, with what was chosen.
  struct Choice {
    qsizetype firstRow = 0;
    qsizetype rowCount = 0;
    GroupMarks marks;
  };
  /// What the last run chose, in the order of the list as it was then; groups that were not asked for are
  /// left out.
  const std::vector<Choice> &lastChoices() const { return choices; }

 private:
  /// `wanted`: the numbers of the groups to mark, all without it.
  void markGroups(const AutomarkRules &rules, const std::optional<QSet<qint64>> &wanted);
  /// The group that begins at a row.
  void gatherGroup(qsizetype first, std::vector<AutomarkRow> &group) const;
  /// `clearsOthers`: takes the marks from the group's other rows.
  void setMarks(const Choice &choice, const std::vector<AutomarkRow> &group, bool clearsOthers);
  void showMarks();

  AppState &state;
  DuplicateGroups &groups;
  /// Read with the first run.
  std::optional<FileKinds> kinds;
  std::vector<Choice> choices;
};
