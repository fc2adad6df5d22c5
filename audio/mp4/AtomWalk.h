#pragma once

#include <QByteArray>
#include <QString>

#include "audio/FileReader.h"

/// Atoms found directly in bytes or in a file, without a tree.
namespace atomwalk {

inline constexpr quint64 kNotFoundOffset = ~quint64(0);

/// What is walked: bytes in memory or an open file.
class Source {
 public:
  explicit(false) Source(QByteArrayView bytes) : memory(bytes) {}
  explicit(false) Source(const FileReader &reader) : file(&reader) {}

  quint64 length() const { return file ? quint64(file->size()) : quint64(memory.size()); }
  /// Up to so many bytes; fewer at the end.
  QByteArray read(quint64 offset, quint64 count) const;
  /// The 16 bytes that an atom's header has at most, fewer at the end. Valid until the next call.
  QByteArrayView headerAt(quint64 offset);
  bool isFile() const { return file != nullptr; }

 private:
  QByteArrayView memory;
  const FileReader *file = nullptr;
  /// What was read of the file around the last header: the next one is mostly near.
  QByteArray window;
  quint64 windowStart = 0;
};

/// The whole size of the atom whose header is at an offset, and its name. Throws TagError "bad size atom".
quint64 sizeOfAtomInAtOffsetName(Source &source, quint64 offset, quint32 *name);
/// Where the header of the atom at a path such as "moov:mvhd" is; `kNotFoundOffset` if there is none. Throws
/// TagError.
quint64 offsetToAtomInAtNamePathIndexed(Source source, const QString &path, const QString &indexes);
/// The payload of that atom; null if there is none. Throws TagError.
QByteArray atomDataInAtNamePathIndexed(Source source, const QString &path, const QString &indexes);
QByteArray atomDataInAtNamePath(const Source &source, const QString &path);
/// An atom's name as a text: Mac OS Roman.
QString nameText(quint32 name);

}  // namespace atomwalk
