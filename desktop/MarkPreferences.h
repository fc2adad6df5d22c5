#pragma once

#include "desktop/PreferencesPage.h"
#include "desktop/WindowActions.h"

class PriorityList;
class QComboBox;
class QSpinBox;

/// The tab "marks": which copy gives the track information, and which one's audio is kept.
class MarkPreferences : public PreferencesPage {
 public:
  explicit MarkPreferences(const WindowActions &windowActions);

  /// Shows an order of the criteria for the information.
  void setPriorityArray(const QStringList &identifiers);

 private:
  void addPriorities();
  void addAudio();
  void addFileType();
  void updateEnabledStates();

  const WindowActions actions;
  PriorityList *priorities = nullptr;
  QComboBox *audio = nullptr;
  QSpinBox *bitRate = nullptr;
  QCheckBox *prefersType = nullptr;
  QComboBox *fileType = nullptr;
};
