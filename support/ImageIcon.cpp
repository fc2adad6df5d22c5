#include "support/ImageIcon.h"

#include <QFile>

#include "platform/Platform.h"

namespace {
constexpr double kBorder = 0.5;
}

QByteArray imageIconNoLargerThan(QByteArrayView picture, double width, double height) {
  const Images &images = *platform().images;
  QByteArray icon = images.imageNoLargerThanSize(picture, width, height, kBorder);
  if (!icon.isEmpty()) return icon;
  QFile file(platform().bundle.resourceFolder + u"/images/unreadable_art.png"_qs);
  if (!file.open(QIODevice::ReadOnly)) return {};
  return images.imageNoLargerThanSize(file.readAll(), width, height, kBorder);
}
