#pragma once

#include <QWidget>

#include "desktop/PreferenceBinder.h"

class NoteStrip;
class QCheckBox;
class QGridLayout;
class QVBoxLayout;

/// One tab of the preferences window: bound controls with their tool tips, and a note that changed settings
/// await a scan.
class PreferencesPage : public QWidget {
 public:
  PreferencesPage();

  void refresh() { binder.refresh(); }
  void setNoteVisible(bool visible);

 protected:
  /// A check box titled and explained by the texts "Prefs-<name>" and "Prefs-<name>ToolTip".
  QCheckBox *checkBox(const QString &name, const QString &key, bool inverted);
  /// Adds the note with its button, hidden, at the end of the page.
  void addNote(const QString &textKey, const QString &buttonKey, const std::function<void()> &pressed);
  QVBoxLayout *column() { return layoutColumn; }

  PreferenceBinder binder;

 private:
  QVBoxLayout *layoutColumn;
  NoteStrip *note = nullptr;
};
