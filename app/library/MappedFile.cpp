#include "app/library/MappedFile.h"

#include <QFileInfo>

bool MappedFile::open(const QString &path, QString *error) {
  file.close();
  copy.clear();
  view = {};
  file.setFileName(path);
  if (QFileInfo(path).isDir() || !file.open(QIODevice::ReadOnly)) {
    const QString why = QFileInfo(path).isDir() ? QStringLiteral("it is a folder") : file.errorString();
    *error = QStringLiteral("Can't read \"%1\": %2").arg(path, why);
    return false;
  }
  const qint64 size = file.size();
  if (const uchar *mapped = size > 0 ? file.map(0, size) : nullptr) {
    view = QByteArrayView(mapped, size);
    return true;
  }
  copy = file.readAll();
  view = copy;
  if (file.error() == QFileDevice::NoError) return true;
  *error = QStringLiteral("Can't read \"%1\": %2").arg(path, file.errorString());
  return false;
}
