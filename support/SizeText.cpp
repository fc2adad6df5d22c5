#include "support/SizeText.h"

#include <QLocale>

QString sizeText(qint64 bytes) {
  return QLocale().formattedDataSize(bytes, bytes < 1000 ? 0 : 1, QLocale::DataSizeSIFormat);
}
