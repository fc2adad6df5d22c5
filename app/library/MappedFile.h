#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QFile>
#include <QString>

/// The bytes of a whole file, mapped read-only where the file system can map, else read into memory. One
/// thread. The music application replaces its files by renaming, which leaves a mapped one whole; a program
/// that shortened the file in place while it is read would end this process (SIGBUS), so keep a mapping no
/// longer than the reading takes.
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
