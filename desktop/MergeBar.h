#pragma once

#include <QWidget>

#include "desktop/PreferenceBinder.h"
#include "desktop/WindowActions.h"

class ElidedLabel;
class QAction;
class QComboBox;
class QPushButton;

/// The row below the duplicates: what becomes of the copies that are not kept, the folder for them, and the
/// button that merges.
class MergeBar : public QWidget {
 public:
  /// The action outlives it.
  MergeBar(const WindowActions &windowActions, QAction *merge);

  /// Shows the settings as they are stored.
  void refresh() { binder.refresh(); }

 private:
  void addPolicy();
  void addFolder();
  void updateFolder();

  const WindowActions &actions;
  PreferenceBinder binder;
  QComboBox *policy;
  ElidedLabel *folder;
  QPushButton *choose;
};
