#pragma once

#include <QLabel>

/// A label of less weight, whose colour follows the palette in force.
class SecondaryLabel : public QLabel {
 public:
  explicit SecondaryLabel(const QString &text = {});

 protected:
  void changeEvent(QEvent *event) override;

 private:
  void updateColours();

  bool updating = false;
};
