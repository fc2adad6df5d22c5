#pragma once

#include <QFrame>

class QLabel;
class QPushButton;

/// A note on a ground of its own, with a button if one is asked for.
class NoteStrip : public QFrame {
 public:
  explicit NoteStrip(const QString &text);
  /// Adds the button; `pressed` runs at each click.
  void setButton(const QString &label, std::function<void()> pressed);

 protected:
  void paintEvent(QPaintEvent *event) override;

 private:
  QLabel *label;
  QPushButton *button = nullptr;
};
