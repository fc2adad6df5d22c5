#pragma once

#include <QDialog>

class QCheckBox;
class QHBoxLayout;
class QLabel;
class QPushButton;
class QVBoxLayout;
class SheetText;

/// A sheet: modal to its window and hanging from its upper edge. A picture, a bold title, a text, whatever
/// else a kind of sheet adds, and the buttons at the right with the default one last. Main thread.
class SheetDialog : public QDialog {
 public:
  static constexpr int kTextWidth = 440;

  explicit SheetDialog(QWidget *attachedTo);

  void setPicture(const QIcon &icon);
  void setTitle(const QString &text);
  void setText(const QString &text);
  /// Where a kind of sheet puts its own, below the text.
  QVBoxLayout *contents() { return column; }
  QFontMetrics titleMetrics() const;
  /// For sheets that are wider than a text.
  void setTitleWidth(int width);
  /// Adds a button left of those that stand. `index` is what it answers; 0 is the default button.
  QPushButton *addButton(const QString &label, int index);
  /// Adds a box "do not ask again". A button other than the one that the escape key presses stores it: the
  /// preference is set if the box is ticked, and removed if not.
  void addSuppression(const QString &words, const QString &preference);
  /// What the escape key answers.
  void setEscapeIndex(int index) { escapeIndex = index; }

  /// Shows the sheet.
  void begin();
  /// Ends the sheet as if the button had been pressed.
  void choose(int index);
  /// Ends the sheet without an answer.
  void dismiss();

  /// Told the answer after the sheet is gone from the screen.
  std::function<void(int)> onChosen;

 protected:
  void reject() override;
  /// Where the sheet's upper edge is, in the window's coordinates.
  virtual int topOn(const QWidget &host) const;
  /// Told before the sheet is shown how many pixels the window has left below it; fewer than none where the
  /// sheet is too high. Here the text is scrolled then.
  virtual void fit(int spare);
  void place();
  void paintEvent(QPaintEvent *event) override;
  bool eventFilter(QObject *watched, QEvent *event) override;

 private:
  QLabel *picture;
  QLabel *title;
  SheetText *text;
  QVBoxLayout *column;
  QHBoxLayout *buttonRow;
  int escapeIndex = 0;
  QCheckBox *suppression = nullptr;
};
