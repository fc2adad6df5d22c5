#include "platform/qt/QtImages.h"

#include <QBuffer>
#include <QImage>
#include <QImageReader>
#include <QPainter>

namespace {

QImage decoded(QByteArrayView picture) {
  QByteArray bytes = QByteArray::fromRawData(picture.data(), picture.size());
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::ReadOnly);
  QImageReader reader(&buffer);
  reader.setDecideFormatFromContent(true);
  return reader.read();
}

}  // namespace

QByteArray QtImages::imageNoLargerThanSize(QByteArrayView picture, double width, double height,
                                           double borderSize) const {
  // The largest picture that decoding takes is Qt's own limit, which is the one that the header names.
  static const bool limited = (QImageReader::setAllocationLimit(256), true);
  Q_UNUSED(limited);
  QImage image = decoded(picture);
  if (image.width() < 1 || image.height() < 1 || !(width >= 1) || !(height >= 1)) return {};
  const QSize room(int(std::min(width, 16384.0)), int(std::min(height, 16384.0)));
  QSize size = image.size();
  if (size.width() > room.width() || size.height() > room.height()) {
    size = size.scaled(room, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
  }
  image = image.convertToFormat(QImage::Format_ARGB32_Premultiplied)
              .scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  if (borderSize > 0) {
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(0, 0, 0, 128), borderSize));
    const double inset = borderSize / 2;
    painter.drawRect(QRectF(image.rect()).adjusted(inset, inset, -inset, -inset));
  }
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  return image.save(&buffer, "PNG") ? bytes : QByteArray();
}
