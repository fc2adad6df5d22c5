#pragma once

#include <QByteArray>
#include <QString>

#include "audio/RegularFile.h"

/// Reads ranges of one file. Only regular files open: a pipe or a device would hold up its reader. One
/// thread.
class FileReader {
 public:
  FileReader() = default;
  explicit FileReader(const QString &path) { open(path); }
  FileReader(const FileReader &) = delete;

  bool open(const QString &path) { return held.open(path, RegularFile::Access::Read); }
  void close() { held.close(); }
  bool isOpen() const { return held.isOpen(); }
  /// The size when the file was opened, in bytes; 0 for a closed file.
  qint64 size() const { return held.size; }

  /// Up to `length` bytes from an offset: fewer at the file's end, none outside or on a failure. Asks for no
  /// more memory than the file had bytes when it was opened.
  QByteArray read(qint64 offset, qint64 length) const;
  /// The same into memory of the caller's; answers how many bytes came.
  qint64 readInto(qint64 offset, char *into, qint64 length) const;

 private:
  RegularFile held;
};
