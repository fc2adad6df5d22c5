#pragma once

#include <QByteArrayView>
#include <QString>

/// Puts new bytes into a file that exists, which stays the same file with the same attributes. Room is found
/// before anything is changed, so that a full disk costs nothing. What a kill in the middle leaves holds all
/// of the file's tail, once or with a stretch doubled: bytes that move towards the end are written from the
/// end, those that move towards the front from the front. One thread.
class FileRewriter {
 public:
  FileRewriter() = default;
  FileRewriter(const FileRewriter &) = delete;
  ~FileRewriter() { close(); }

  /// Opens a regular file for reading and writing; false for anything else.
  bool open(const QString &path);
  void close();
  qint64 size() const { return fileSize; }

  /// Overwrites the front of the file; the rest and the length stay. A line for the user on failure, else
  /// null.
  [[nodiscard]] QString writeFront(QByteArrayView bytes);
  /// Makes the file consist of these bytes. A line for the user on failure, else null.
  [[nodiscard]] QString replaceAll(QByteArrayView bytes);

 private:
  QString writeAt(qint64 offset, QByteArrayView bytes);

  int descriptor = -1;
  qint64 fileSize = 0;
};
