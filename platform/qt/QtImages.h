#pragma once

#include "platform/Images.h"

/// Pictures by QImage. A picture that would unfold to more than 256 MiB counts as unreadable.
class QtImages : public Images {
 public:
  QByteArray imageNoLargerThanSize(QByteArrayView picture, double width, double height,
                                   double borderSize) const override;
};
