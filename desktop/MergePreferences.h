#pragma once

#include "desktop/PreferencesPage.h"

/// The tab "merge": what a merge carries over, when it stops, and what it asks beforehand.
class MergePreferences : public PreferencesPage {
 public:
  MergePreferences();
};
