#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include "fuzz/Require.h"

/// One file, in memory alone, whose bytes are each input's in turn.
class InputFile {
 public:
  InputFile() { require(descriptor >= 0); }
  InputFile(const InputFile &) = delete;
  ~InputFile() { ::close(descriptor); }

  /// Makes the file hold these bytes; answers its path.
  QString holding(const QByteArray &bytes) {
    require(::ftruncate(descriptor, 0) == 0);
    require(::pwrite(descriptor, bytes.constData(), size_t(bytes.size()), 0) == ssize_t(bytes.size()));
    return QStringLiteral("/proc/self/fd/%1").arg(descriptor);
  }
  QByteArray bytes() const {
    QByteArray held(::lseek(descriptor, 0, SEEK_END), '\0');
    require(::pread(descriptor, held.data(), size_t(held.size()), 0) == ssize_t(held.size()));
    return held;
  }

 private:
  int descriptor = ::memfd_create("input", 0);
};

/// The input over and over until there are so many bytes.
inline QByteArray repeated(const QByteArray &input, qsizetype size) {
  return input.isEmpty() ? QByteArray() : input.repeated(size / input.size() + 1);
}
