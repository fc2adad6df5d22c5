#pragma once

#include <QAbstractTableModel>
#include <QSet>

#include "app/state/AppState.h"
#include "desktop/ProblemColumns.h"

/// One problem list as a table. Answers from the list's rows under the list's lock; nothing is copied. The
/// rows that have come since the last `reload` are not shown before the next. Main thread.
class ProblemTableModel : public QAbstractTableModel {
 public:
  /// True for a row on the darker ground.
  static constexpr int kStripeRole = Qt::UserRole;

  ProblemTableModel(AppState &appState, ProblemTab problemTab);

  int rowCount(const QModelIndex &parent = {}) const override;
  int columnCount(const QModelIndex &parent = {}) const override;
  QVariant data(const QModelIndex &index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  /// Takes the list as it is now. Rows that were only appended are inserted, so that selection and place
  /// stay; anything else is a model reset, and the answer is true.
  bool reload();

  /// The row, by reference; none outside the list.
  Dictionary row(int index) const;
  std::vector<Dictionary> rowsAt(const std::vector<int> &indexes) const;
  /// Where the rows with these identities are now, ascending; those that have left the list are not among
  /// them.
  std::vector<int> indexesOf(const QSet<const void *> &identities) const;
  /// How many groups of duplicates the rows shown belong to; rows of a group stand next to each other.
  int groupCount() const { return groups; }
  /// The row's texts in the columns given, separated by tabs.
  QString rowText(int index, const std::vector<int> &columns) const;

 private:
  const Array &list() const { return std::as_const(state.lists)[tab]; }
  bool isStriped(int index) const;
  void countGroups();

  AppState &state;
  const ProblemTab tab;
  const std::vector<ProblemColumn> &columns;
  Array shownList;
  int shownRows = 0;
  int groups = 0;
  /// The last row shown, held so that its identity cannot pass to another.
  Dictionary lastRow;
};
