#pragma once

#include <QAction>
#include <vector>

#include "desktop/WindowActions.h"
#include "ui/ProblemTables.h"

class DuplicateTable;
class QMenu;

/// The commands of the table of duplicates, for the menu bar, the buttons below the table and the context
/// menu. Those for single marks have keys of one letter, which act while the table has the focus.
class DuplicateCommands {
 public:
  /// The table outlives it.
  DuplicateCommands(DuplicateTable &duplicateTable, const WindowActions &actions);

  void fillMenu(QMenu &menu) const;
  /// For a right click on a row.
  void fillContextMenu(QMenu &menu, int row) const;
  /// The commands that have buttons.
  std::vector<QAction *> buttonActions() const { return {automark, unmark, notDuplicates}; }
  /// The command that merges, which has a button of its own.
  QAction *mergeAction() const { return merge; }
  /// Sets enabled states and titles anew; all are off while another tab is shown.
  void update(const ProblemUIStates &states, bool isShown);

 private:
  QAction *add(const QString &name, const QKeySequence &shortcut, std::function<void()> run);
  QAction *addMark(const QString &name, int key, const std::vector<Key> &marks);

  DuplicateTable &table;
  QAction *automark;
  QAction *unmark;
  QAction *markInformation;
  QAction *markAudio;
  QAction *markBoth;
  QAction *notDuplicates;
  QAction *merge;
};
