#pragma once

#include <QString>

/// An open regular file, by its descriptor. Nothing else opens: a pipe or a device would hold up its reader.
/// One thread.
struct RegularFile {
  enum class Access { Read, ReadAndWrite };

  RegularFile() = default;
  RegularFile(const RegularFile &) = delete;
  ~RegularFile() { close(); }

  bool open(const QString &path, Access access);
  void close();
  bool isOpen() const { return descriptor >= 0; }

  /// What the system calls an error of its own, as a line for the user.
  static QString lineOfError(int error);

  /// The descriptor; -1 for a closed file.
  int descriptor = -1;
  /// The size in bytes when the file was opened, or as its owner has changed it since; 0 for a closed file.
  qint64 size = 0;
};
