#pragma once

#include "desktop/SheetDialog.h"

class QProgressBar;

/// The progress sheet: what goes on, a quote, a bar, what has come of it so far, and Cancel.
class ProgressPanel : public SheetDialog {
 public:
  ProgressPanel(QWidget *attachedTo, std::function<void()> cancelPressed);

  void setQuote(const QString &quote);
  void setSubText(const QString &found);
  void setIndeterminate(bool indeterminate);
  /// Any amount above 0; the bar shows value / maximum, kept between nothing and full.
  void setMaximum(double newMaximum);
  void setValue(double newValue);
  void setCancelEnabled(bool enabled);

 protected:
  /// The escape key cancels the operation; the operation ends the sheet.
  void reject() override;

 private:
  void updateBar();

  QLabel *quoteLabel;
  QLabel *subLabel;
  QProgressBar *bar;
  QPushButton *cancel;
  double maximum = 1.0;
  double value = 0.0;
  bool isIndeterminate = true;
};
