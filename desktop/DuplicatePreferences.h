#pragma once

#include "desktop/PreferencesPage.h"
#include "desktop/WindowActions.h"

class QSlider;
class QSpinBox;

/// The tab "dupe": what makes two songs duplicates.
class DuplicatePreferences : public PreferencesPage {
 public:
  explicit DuplicatePreferences(const WindowActions &actions);

 private:
  void addDuration();
  void addLongTracks();
  void updateEnabledStates();

  QCheckBox *duration = nullptr;
  QSlider *variationSlider = nullptr;
  QSpinBox *variation = nullptr;
  QCheckBox *longTracks = nullptr;
  QSpinBox *minimum = nullptr;
};
