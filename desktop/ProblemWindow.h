#pragma once

#include <QMainWindow>

#include "desktop/ProblemPage.h"

class NoteStrip;
class ProblemToolbar;
class QLabel;
class QMenu;

/// The main window: the toolbar, a page for each kind of problem, and the menus.
class ProblemWindow : public QMainWindow {
 public:
  ProblemWindow(AppState &appState, WindowActions windowActions);

  ProblemPage &page(ProblemTab tab) { return *pages[int(tab)]; }
  ProblemTab currentTab() const;
  void selectTab(ProblemTab tab);
  void setTabLabel(ProblemTab tab, const QString &label);
  void reloadTable(ProblemTab tab);
  void rememberSelection();
  void restoreSelection();
  /// Sets labels and enabled states anew.
  void validate();
  void setPhoneticWarningVisible(bool visible);

  /// The frame as the preferences keep it.
  QString placeText() const;
  /// Where sheets begin, in the window's coordinates.
  int sheetTop() const;

 protected:
  void closeEvent(QCloseEvent *event) override;
  void changeEvent(QEvent *event) override;

 private:
  void setUpMenus();
  void setUpFileMenu();
  void setUpEditMenu();
  void setUpViewMenu();
  QAction *addAction(QMenu *menu, const QString &text, const QKeySequence &shortcut,
                     std::function<void()> run);
  void restorePlace();
  void updateStatus();

  AppState &state;
  const WindowActions actions;
  ProblemToolbar *toolbar;
  NoteStrip *phoneticWarning;
  QStackedWidget *stack;
  ProblemPage *pages[kProblemTabCount];
  QLabel *status;
  QAction *rescanAction = nullptr;
  QAction *copyAction = nullptr;
  QAction *selectAllAction = nullptr;
  QAction *tabActions[kProblemTabCount] = {};
  bool phoneticWarningWanted = false;
  std::vector<Dictionary> mRememberedSelectedItems;
};
