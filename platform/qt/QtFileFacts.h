#pragma once

#include "platform/FileFacts.h"

/// What the file system tells. There is no metadata service here.
class QtFileFacts : public FileFacts {
 public:
  Dictionary metadata(const QString &path) const override;
  std::optional<Date> modificationDate(const QString &path) const override;
  QString typeCode(const QString &path) const override;
  bool isPackage(const QString &path) const override;
  std::optional<qint64> fileSize(const QString &path) const override;
  qint64 freeBytes(const QString &path) const override;
};
