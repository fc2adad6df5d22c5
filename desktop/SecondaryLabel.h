#pragma once

#include <QLabel>

/// Plain text of less weight in as many lines as it needs. Mixes its colour while it paints, so that it fits
/// whatever palette is in force.
class SecondaryLabel : public QLabel {
 public:
  explicit SecondaryLabel(const QString &text = {});

 protected:
  void paintEvent(QPaintEvent *event) override;
};
