#pragma once

#include <QAbstractTableModel>
#include <QSet>

#include "app/state/AppState.h"
#include "desktop/ProblemColumns.h"
#include "ui/ProblemTables.h"

/// One problem list as a table. Answers from the list's rows under the list's lock; nothing is copied. The
/// rows that have come since the last `reload` are not shown before the next. Main thread.
class ProblemTableModel : public QAbstractTableModel {
 public:
  /// True for a row on the darker ground.
  static constexpr int kStripeRole = Qt::UserRole;

  ProblemTableModel(AppState &appState, ProblemTables &problemTables, ProblemTab problemTab);

  int rowCount(const QModelIndex &parent = {}) const override;
  int columnCount(const QModelIndex &parent = {}) const override;
  /// Marks answer their check state and what it means, as a tool tip and for screen readers.
  QVariant data(const QModelIndex &index, int role) const override;
  /// Sets a mark by its check state.
  bool setData(const QModelIndex &index, const QVariant &value, int role) override;
  Qt::ItemFlags flags(const QModelIndex &index) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  /// Takes the list as it is now. Rows that were only appended are inserted, so that selection and place
  /// stay; anything else is a model reset, and the answer is true.
  bool reload();
  /// Rows from `first` to before `end` show other marks or another preferred spelling.
  void reloadRows(int first, int end);

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
  /// The value that the tables give for a cell.
  Value value(int row, int column) const;

 private:
  const Array &list() const { return std::as_const(state.lists)[tab]; }
  /// Counts the groups of the rows from `first` on; those before it are counted already.
  void countGroupsFrom(int first);
  QString markText(const QModelIndex &index) const;
  QString spellingsToolTip(int row) const;

  AppState &state;
  ProblemTables &tables;
  const ProblemTab tab;
  const std::vector<ProblemColumn> &columns;
  Array shownList;
  int shownRows = 0;
  int groups = 0;
  /// The group of the last row counted.
  qint64 lastGroup = 0;
  /// The last row shown, held so that its identity cannot pass to another.
  Dictionary lastRow;
};
