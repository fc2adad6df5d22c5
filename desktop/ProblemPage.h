#pragma once

#include <QStackedWidget>

#include "desktop/EmptyPage.h"
#include "desktop/ProblemTable.h"
#include "desktop/WindowActions.h"

/// One tab of the problem window: its table, or while that is empty, what to do.
class ProblemPage : public QStackedWidget {
 public:
  /// The page takes the table.
  ProblemPage(AppState &appState, const WindowActions &windowActions, ProblemTab problemTab,
              ProblemTable *table);

  ProblemTable &table() { return *rows; }
  /// Reads the list anew and changes between table and empty page.
  void reload();
  /// Sets the empty page anew for what is the case.
  void updateEmptyPage();
  /// Counts for the line below the table; empty for an empty table.
  QString summary() const;

 private:
  /// Whether a scan looks for this kind of problem.
  bool isLookedFor() const { return tab == ProblemTab::Duplicates || tab == ProblemTab::Names; }
  QString countLine(int count) const;

  AppState &state;
  const WindowActions &actions;
  const ProblemTab tab;
  ProblemTable *rows;
  EmptyPage *empty;
};
