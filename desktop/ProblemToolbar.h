#pragma once

#include <QWidget>

#include "app/state/ProblemView.h"

class ToolbarButton;
struct WindowActions;

/// The row over the tables: the four tabs with their counts, rescan and preferences.
class ProblemToolbar : public QWidget {
 public:
  explicit ProblemToolbar(const WindowActions &actions);

  void setTabLabel(ProblemTab tab, const QString &label);
  void setCurrentTab(ProblemTab tab);
  void setRescanLabel(const QString &label, const QString &toolTip);

  std::function<void(ProblemTab)> onTabClicked;

 protected:
  void paintEvent(QPaintEvent *event) override;

 private:
  ToolbarButton *tabs[kProblemTabCount];
  ToolbarButton *rescan;
};
