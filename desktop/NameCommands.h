#pragma once

#include <QMenu>

#include "ui/ProblemTables.h"

class NameTable;

/// The commands of the table of names: the spellings of the current row to choose from, and the next one by a
/// key.
class NameCommands {
 public:
  /// Both outlive it.
  NameCommands(NameTable &nameTable, ProblemTables &problemTables);

  void fillMenu(QMenu &menu);
  /// For a right click on a row.
  void fillContextMenu(QMenu &menu, int row) const;
  /// Sets enabled states anew; all are off while another tab is shown.
  void update(bool isShown);

 private:
  /// Fills a menu with the spellings of a row, the preferred one checked.
  void fillSpellings(QMenu &menu, int row) const;

  NameTable &table;
  ProblemTables &tables;
  QMenu *spellings = nullptr;
  QAction *next;
};
