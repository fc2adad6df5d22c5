#pragma once

#include "desktop/PreferencesPage.h"
#include "desktop/WindowActions.h"

/// The tab "names": which names are alike.
class NamePreferences : public PreferencesPage {
 public:
  explicit NamePreferences(const WindowActions &actions);
};
