#pragma once

#include "desktop/SheetDialog.h"

/// The sheet that explains what duplicates are. Remembers, however it is left, if it need not come again.
class ExplainSheet : public SheetDialog {
 public:
  ExplainSheet(QWidget *attachedTo, std::function<void()> preferencesPressed);
};
