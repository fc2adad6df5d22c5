#pragma once

#include "ctl/Terminal.h"

/// A bar with a text on the last line of standard error, drawn anew when something that it shows changes;
/// nothing where nobody watches.
class ProgressBar {
 public:
  explicit ProgressBar(Terminal &drawnOn) : terminal(drawnOn) {}

  void setText(const QString &newText);
  void setSubText(const QString &newText);
  void setIndeterminate(bool newIndeterminate);
  void setMaximum(double newMaximum);
  void setValue(double newValue);
  /// Takes the bar off the screen until the next change.
  void clear();

 private:
  void draw();

  Terminal &terminal;
  QString text, subText;
  bool indeterminate = true;
  double maximum = 0.0, value = 0.0;
  QString drawn;
};
