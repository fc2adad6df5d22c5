#pragma once

#include <QDialog>

#include "desktop/WindowActions.h"

class DuplicatePreferences;
class LibraryPreferences;
class MarkPreferences;
class MergePreferences;
class NamePreferences;
class PreferencesPage;
class QTabWidget;

/// The preferences window with its tabs "library", "dupe", "marks", "names" and "merge". Each change is
/// stored at once.
class PreferencesWindow : public QDialog {
 public:
  explicit PreferencesWindow(WindowActions windowActions);

  /// Shows the window at a tab; an unknown identifier leaves the tab as it is. The first time it appears
  /// where it was last, else over `near`.
  void reveal(const QString &tabIdentifier, const QWidget *near);
  /// Shows the settings as they are stored.
  void refresh();
  LibraryPreferences &library() { return *libraryPage; }
  MarkPreferences &marks() { return *markPage; }
  /// Group 0 is duplicates, 1 marks, 2 names.
  void setSettingsNoteVisible(int group, bool visible);
  /// The window's top-left point as the preferences keep it; empty if it has not been shown.
  QString originText() const;

 protected:
  void changeEvent(QEvent *event) override;

 private:
  void restorePlace(const QWidget *near);

  const WindowActions actions;
  QTabWidget *tabs;
  LibraryPreferences *libraryPage;
  DuplicatePreferences *duplicatePage;
  MarkPreferences *markPage;
  NamePreferences *namePage;
  MergePreferences *mergePage;
  bool wasShown = false;
};
