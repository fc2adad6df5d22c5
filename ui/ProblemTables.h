#pragma once

#include "app/library/CalculatedValues.h"
#include "app/state/ProblemView.h"
#include "scanners/InconNameController.h"
#include "ui/MarkedGroups.h"
#include "ui/SpellingChoices.h"

struct AppState;
class DuplicateGroups;

/// Which buttons and commands may be used now.
struct ProblemUIStates {
  bool merge = false;
  bool ignore = false;
  bool automark = false;
  bool unmark = false;
  bool fixNames = false;
  bool orphanAdd = false;
  bool orphanDelete = false;
  bool missingDelete = false;
};

/// What the four tables do, without drawing: the value of each cell, clicks on marks, double clicks on
/// spellings, stripes, and which commands may be used. A column is known by the key that it shows. Main
/// thread.
class ProblemTables {
 public:
  /// All outlive it.
  ProblemTables(AppState &appState, DuplicateGroups &duplicateGroups, const InconNameController &names,
                const Dictionary &resources);

  /// The value of a cell; null outside the list. Takes the list's lock.
  Value tableViewObjectValueForTableColumnRow(ProblemTab tab, Key column, qsizetype row) const;
  /// A click on a mark: stores it, keeps the group's marks consistent and the view up to date. Beeps and does
  /// nothing while the window has a sheet. Does nothing for columns that are no marks.
  void tableViewSetObjectValueForTableColumnRow(ProblemTab tab, const Value &value, Key column,
                                                qsizetype row);
  /// The same for marks of several rows at once, as keys and menus ask for it. Of rows of one group the first
  /// is taken, as a group has each mark once. If all of these have the marks already, they lose them.
  void toggleMarks(const std::vector<qsizetype> &rows, const std::vector<Key> &marks);
  /// True for a row on the darker ground.
  bool tableViewStripeForRow(ProblemTab tab, qsizetype row) const;

  /// A double click in the table of names at a point of the row's line of spellings: takes the spelling under
  /// it.
  void tableDidMouseDownWithEvent(qsizetype row, float x, const InconNameController::Layout &layout);
  /// The same by the index of a song of the row, for menus and keys.
  void choosePreferredSong(qsizetype row, qint32 songIndex);

  /// The distinct spellings of a row of names, in the order shown; none outside the list.
  std::vector<SpellingChoice> spellingsOfRow(qsizetype row) const;

  /// The states after any change of selection, tab or marks. With `marksAreUnchanged` the answer about marks
  /// of the last time stands, as long as it is about the same list.
  ProblemUIStates validateProblemUI(bool marksAreUnchanged = false);

 private:
  Dictionary rowOf(ProblemTab tab, qsizetype row) const;
  /// Stores a mark under the list's lock, and answers the rows that show something new; none for no change.
  MarkedGroups::Range storeMark(const Array &list, const Value &value, Key mark, qsizetype row);
  void afterUserChoice(const Dictionary &row, qsizetype index);
  void validateAfterClick();

  AppState &state;
  DuplicateGroups &groups;
  const InconNameController &mInconNameController;
  CalculatedValues calculatedValues;
  MarkedGroups markedGroups;
  /// The marks have changed by a click that `markedGroups` has been told of.
  bool tellingOfClick = false;
};
