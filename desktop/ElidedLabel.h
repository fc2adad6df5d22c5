#pragma once

#include <QLabel>

/// One line of text, shortened in the middle where it does not fit; the tool tip tells it whole.
class ElidedLabel : public QLabel {
 public:
  ElidedLabel();
  void setFullText(const QString &text);
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent *event) override;
};
