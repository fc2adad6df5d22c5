#pragma once

#include <QByteArrayView>
#include <QString>

/// A file that is written under a temporary name beside its place and takes the place at the end. Operations
/// throw `StoreError`; without `takePlace` nothing is left behind.
class ExportFile {
 public:
  /// Removes what exports that were killed have left beside the place.
  explicit ExportFile(const QString &place);
  ~ExportFile();
  ExportFile(const ExportFile &) = delete;
  ExportFile &operator=(const ExportFile &) = delete;

  void write(QByteArrayView bytes);
  /// All bytes have reached the disk, and the file is closed.
  void close();
  /// Replaces the file at the place and brings the folder's entry to the disk.
  void takePlace();
  const QString &temporaryPath() const { return temporary; }

 private:
  [[noreturn]] void fail(const char *step) const;

  QString place;
  QString temporary;
  int handle = -1;
};

/// Tells a file from every other one and from itself after a change: device, number, size, date. Empty if
/// there is no file.
QString fileStamp(const QString &path);

/// Gives a file a second name that was free, of the form "NAME (WORDS).EXT", numbered if need be. Throws
/// `StoreError`.
QString keepUnderAnotherName(const QString &path, const QString &words);
