#pragma once

#include <QByteArray>
#include <QByteArrayView>

/// Pictures. Any thread.
class Images {
 public:
  virtual ~Images() = default;
  /// The picture scaled down to fit the size in pixels, proportions kept, with a thin border of the given
  /// width, as PNG bytes. No bytes when the picture cannot be read or is smaller than 1 by 1.
  virtual QByteArray imageNoLargerThanSize(QByteArrayView picture, double width, double height,
                                           double borderSize) const = 0;
};
