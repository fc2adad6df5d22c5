#pragma once

#include <QFrame>

class QLabel;
class QPushButton;

/// A note on a ground of its own, with buttons if any are asked for.
class NoteStrip : public QFrame {
 public:
  explicit NoteStrip(const QString &text);
  void setText(const QString &text);
  /// Adds a button at the right; `pressed` runs at each click.
  QPushButton *addButton(const QString &label, std::function<void()> pressed);

 protected:
  void paintEvent(QPaintEvent *event) override;

 private:
  QLabel *label;
};
