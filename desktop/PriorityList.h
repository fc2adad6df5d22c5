#pragma once

#include <QWidget>

#include "desktop/PriorityModel.h"

class QListView;
class QToolButton;

/// The order of the criteria for the row of the information: a list whose rows are dragged, or moved with the
/// arrow buttons or Ctrl and an arrow key.
class PriorityList : public QWidget {
 public:
  PriorityList();
  ~PriorityList() override;

  RKTrackInfoPriorityController &controller() { return order; }

 private:
  QToolButton *moveButton(Qt::ArrowType arrow, int by, const QString &textKey);
  /// Moves the selected row up or down and keeps it selected.
  void moveSelected(int by);
  void reload();
  void updateButtons();

  RKTrackInfoPriorityController order;
  PriorityModel model{order};
  /// The order as it was shown last.
  QStringList shown;
  QListView *list;
  QToolButton *up;
  QToolButton *down;
};
