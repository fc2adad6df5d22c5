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
  bool isFile() const { return file != nullptr; }

 private:
  QByteArrayView memory;
  const FileReader *file = nullptr;
};

/// The whole size of the atom whose header is at an offset, and its name. Throws TagError "bad size atom".
quint64 sizeOfAtomInAtOffsetName(const Source &source, quint64 offset, quint32 *name);
/// Where the header of the atom at a path such as "moov:mvhd" is; `kNotFoundOffset` if there is none. Throws
/// TagError.
quint64 offsetToAtomInAtNamePathIndexed(const Source &source, const QString &path, const QString &indexes);
/// The payload of that atom; null if there is none. Throws TagError.
QByteArray atomDataInAtNamePathIndexed(const Source &source, const QString &path, const QString &indexes);
QByteArray atomDataInAtNamePath(const Source &source, const QString &path);
/// An atom's name as a text: Mac OS Roman.
QString nameText(quint32 name);

}  // namespace atomwalk
