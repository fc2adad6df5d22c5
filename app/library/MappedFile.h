#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QFile>
#include <QString>

/// The bytes of a whole file, mapped read-only where the file system can map, else read into memory. One
/// thread.
class MappedFile {
 public:
  MappedFile() = default;
  MappedFile(const MappedFile &) = delete;
  MappedFile &operator=(const MappedFile &) = delete;

  /// Opens a regular file in place of one opened before. False with a line in `error` that says which file
  /// and why; an empty file is no failure.
  [[nodiscard]] bool open(const QString &path, QString *error);

  /// Valid until the next `open` and the end of this object.
  QByteArrayView bytes() const { return view; }

 private:
  QFile file;
  QByteArray copy;
  QByteArrayView view;
};
