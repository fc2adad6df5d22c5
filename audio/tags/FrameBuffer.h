#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

/// A tag's bytes while frames are put behind each other. One thread.
class FrameBuffer {
 public:
  /// A version of 2, 3 or 4, which decides how ids, sizes and flags look.
  FrameBuffer(int major, bool synchSafeSizes);

  int idLength() const { return version == 2 ? 3 : 4; }
  /// A frame with its header: id, size of the body, two zero bytes where frames have flags, body.
  void addFrame(QByteArrayView id, QByteArrayView body, QByteArrayView rest = {});
  /// A frame whose flags, where frames have any, are the first two bytes of what is put in.
  void addRawFrame(QByteArrayView id, QByteArrayView flagsAndBody);
  /// An id alone, as it is left by a frame whose value nobody can write.
  void addID(QByteArrayView id) { bytes += id; }

  /// The tag with its header; null if a size does not fit its field.
  QByteArray finished();

 private:
  void addSize(qint64 size);

  int version;
  bool isSynchSafe;
  bool isTooLarge = false;
  QByteArray bytes;
};
