#pragma once

#include <QByteArray>
#include <QString>

#include "audio/RegularFile.h"

/// Puts new bytes into a file that exists, which stays the same file with the same attributes. Room is found
/// before anything is changed, so that a full disk costs nothing. What a kill in the middle leaves holds all
/// of the file's tail, once or with a stretch doubled: bytes that move towards the end are written from the
/// end, those that move towards the front from the front. One thread.
class FileRewriter {
 public:
  FileRewriter() = default;
  FileRewriter(const FileRewriter &) = delete;

  /// Opens a regular file for reading and writing; false for anything else.
  bool open(const QString &path) { return held.open(path, RegularFile::Access::ReadAndWrite); }
  void close() { held.close(); }
  qint64 size() const { return held.size; }

  /// Overwrites the front of the file; the rest and the length stay. A line for the user on failure, else
  /// null.
  [[nodiscard]] QString writeFront(QByteArrayView bytes);
  /// Makes the file consist of these bytes. A line for the user on failure, else null.
  [[nodiscard]] QString replaceAll(QByteArrayView bytes);
  /// Puts a new head and a new tail around a range of the file, the audio, and drops what else there was.
  /// Audio that stays where it is is not written. A line for the user on failure, else null; after a failed
  /// write the old bytes are put back as far as the disk takes them.
  ///
  /// At every instant each byte of the audio is in the file, so that a kill costs none: it can leave a mixed
  /// tag, a stretch of audio twice and a rest of old bytes. A power failure while the system has
  /// not yet written its memory to the disk can cost audio where it moved.
  [[nodiscard]] QString replaceAround(QByteArrayView head, qint64 start, qint64 length, QByteArrayView tail);

 private:
  struct OldBytes {
    QByteArray head, audio, tail;
  };

  QString writeAt(qint64 offset, QByteArrayView bytes);
  bool readOldBytes(qint64 start, qint64 length, bool withAudio, OldBytes &old) const;
  QString makeRoom(qint64 size, QByteArrayView tail);
  QString writeFromEnd(qint64 offset, QByteArrayView bytes, qint64 chunk);
  void putBack(const OldBytes &old, qint64 start, qint64 length);

  RegularFile held;
};
