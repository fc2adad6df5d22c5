#pragma once

#include <QMainWindow>

#include "desktop/ProblemPage.h"

class CommandBar;
class DuplicateCommands;
class MergeBar;
class NameCommands;
class NoteStrip;
class ProblemToolbar;
class QMenu;
class QVBoxLayout;

/// The main window: the toolbar, a page for each kind of problem, and the menus.
class ProblemWindow : public QMainWindow {
 public:
  /// State and tables outlive it.
  ProblemWindow(AppState &appState, ProblemTables &problemTables, WindowActions windowActions);
  ~ProblemWindow() override;

  ProblemPage &page(ProblemTab tab) { return *pages[int(tab)]; }
  ProblemTab currentTab() const;
  void selectTab(ProblemTab tab);
  void setTabLabel(ProblemTab tab, const QString &label);
  void reloadTable(ProblemTab tab);
  void reloadRows(ProblemTab tab, qsizetype first, qsizetype end);
  void rememberSelection();
  void restoreSelection();
  /// Sets labels and enabled states anew. `marksAreUnchanged`: no mark has changed since the last time.
  void validate(bool marksAreUnchanged = false);
  void setPhoneticWarningVisible(bool visible);
  /// Scrolls a table so that a row is the topmost one, as far as there are rows.
  void scrollToTop(ProblemTab tab, qsizetype row);
  /// How many pixels the row is below the window's upper edge.
  int heightAbove(ProblemTab tab, qsizetype row);
  /// Shows in one line over the tables what a merge did; `showDetails` runs when the user asks for more.
  void showMergeNote(const QString &headline, std::function<void()> showDetails);
  void hideMergeNote();

  /// The frame as the preferences keep it.
  QString placeText() const;
  /// Where sheets begin, in the window's coordinates.
  int sheetTop() const;
  /// Where sheets end that hang at the lower edge.
  int sheetBottom() const;

 protected:
  void closeEvent(QCloseEvent *event) override;
  void changeEvent(QEvent *event) override;

 private:
  void setUpPages();
  void setUpMerge(QVBoxLayout &column);
  void setUpMenus();
  void setUpFileMenu();
  void setUpEditMenu();
  void setUpViewMenu();
  QAction *addAction(QMenu *menu, const QString &text, const QKeySequence &shortcut,
                     std::function<void()> run);
  void restorePlace();
  void updateRescanLabel();
  void updateStatus();
  /// Adds Copy to the menu of a table's row.
  void finishContextMenu(QMenu &menu) const;

  AppState &state;
  ProblemTables &tables;
  const WindowActions actions;
  ProblemToolbar *toolbar;
  NoteStrip *phoneticWarning;
  NoteStrip *mergeNote;
  QStackedWidget *stack;
  ProblemPage *pages[kProblemTabCount];
  std::unique_ptr<DuplicateCommands> duplicateCommands;
  std::unique_ptr<NameCommands> nameCommands;
  CommandBar *bar;
  MergeBar *mergeBar = nullptr;
  std::function<void()> showMergeDetails;
  QAction *rescanAction = nullptr;
  QAction *copyAction = nullptr;
  QAction *selectAllAction = nullptr;
  QAction *tabActions[kProblemTabCount] = {};
  bool phoneticWarningWanted = false;
  std::vector<Dictionary> mRememberedSelectedItems;
};
