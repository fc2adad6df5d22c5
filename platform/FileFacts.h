#pragma once

#include <QString>
#include <optional>

#include "values/Value.h"

/// What the platform knows of a file beyond its bytes. Any thread.
class FileFacts {
 public:
  virtual ~FileFacts() = default;
  /// The metadata service's attributes of the file at a path; a null dictionary where there is no service.
  virtual Dictionary metadata(const QString &path) const = 0;
  /// When the file's bytes last changed, as finely as the file system tells; nothing if there is no file.
  virtual std::optional<Date> modificationDate(const QString &path) const = 0;
  /// The four-character type code that some file systems keep; empty elsewhere.
  virtual QString typeCode(const QString &path) const = 0;
  /// True for a folder that the platform shows to its users as one file.
  virtual bool isPackage(const QString &path) const = 0;
  /// The size in bytes of what a path leads to, links followed; -1 if it cannot be told; nothing if there is
  /// no file.
  virtual std::optional<qint64> fileSize(const QString &path) const = 0;
  /// The bytes that this user may still write on the volume that holds a path; 0 if it cannot be told.
  virtual qint64 freeBytes(const QString &path) const = 0;
};
