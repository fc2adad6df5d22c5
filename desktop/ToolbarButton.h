#pragma once

#include <QAbstractButton>

#include "desktop/Icons.h"

/// A button of the toolbar: the icon over the label, flat until it is pointed at, pressed, checked or
/// focused.
class ToolbarButton : public QAbstractButton {
 public:
  ToolbarButton(icons::Shape shape, const QString &objectName);

  void setLabel(const QString &label);
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent *event) override;
};
