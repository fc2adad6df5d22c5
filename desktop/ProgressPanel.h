#pragma once

#include "desktop/SheetDialog.h"

class NoteStrip;
class QProgressBar;

/// The progress sheet: what goes on, a quote, a bar, what has come of it so far, and Cancel. The bar, the
/// line below it and Cancel are drawn anew before their operation returns: whoever changes them may be about
/// to hold the main thread up for seconds.
class ProgressPanel : public SheetDialog {
 public:
  ProgressPanel(QWidget *attachedTo, std::function<void()> cancelPressed);

  /// One line, shortened where it does not fit, so that the sheet keeps its size from title to title.
  void setOneLineTitle(const QString &title);
  void setQuote(const QString &quote);
  void setSubText(const QString &found);
  void setIndeterminate(bool indeterminate);
  /// Any amount above 0; the bar shows value / maximum, kept between nothing and full. Within one maximum it
  /// goes back to nothing, but never to less.
  void setMaximum(double newMaximum);
  void setValue(double newValue);
  void setCancelEnabled(bool enabled);
  /// The warning that the music application does not answer.
  void setWarningVisible(bool visible);
  /// Hangs at the window's lower edge from now on, so that the table's first rows can be read, or at the
  /// upper.
  void setLow(bool low);
  bool isLow() const { return hangsLow; }

 protected:
  int topOn(const QWidget &host) const override;
  /// The escape key cancels the operation; the operation ends the sheet.
  void reject() override;

 private:
  void updateBar();

  QLabel *quoteLabel;
  QLabel *subLabel;
  QProgressBar *bar;
  NoteStrip *warning;
  QPushButton *cancel;
  double maximum = 1.0;
  double value = 0.0;
  bool isIndeterminate = true;
  bool hangsLow = false;
};
