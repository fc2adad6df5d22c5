#pragma once

#include <QStringList>

#include "app/library/CalculatedValues.h"
#include "app/state/ProblemView.h"
#include "scanners/InconNameController.h"

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
  /// nothing while an operation runs.
  void tableViewSetObjectValueForTableColumnRow(ProblemTab tab, const Value &value, Key column,
                                                qsizetype row);
  /// True for a row on the darker ground.
  bool tableViewStripeForRow(ProblemTab tab, qsizetype row) const;

  /// A double click in the table of names at a point of the row's line of spellings: takes the spelling under
  /// it.
  void tableDidMouseDownWithEvent(qsizetype row, float x, const InconNameController::Layout &layout);
  /// The same by the index of a song of the row, for menus and keys.
  void choosePreferredSong(qsizetype row, qint32 songIndex);

  /// The states after any change of selection, tab or marks.
  ProblemUIStates validateProblemUI() const;

 private:
  void afterUserChoice(const Dictionary &row);
  bool anyGroupIsMarked() const;

  AppState &state;
  DuplicateGroups &groups;
  const InconNameController &mInconNameController;
  CalculatedValues calculatedValues;
};
