#include "support/Compression.h"

#include <zlib.h>

#include <QFile>
#include <QRandomGenerator>

#include "platform/Platform.h"

namespace {

constexpr int kBlock = 32768;

/// A name in the temporary folder, or a hidden one in the home folder.
QString temporaryPath(const char *kind, bool atHome) {
  const Folders &folders = platform().folders;
  return QStringLiteral("%1/%2%3_%4.gz")
      .arg(atHome ? folders.home : folders.temporary, atHome ? QStringLiteral(".") : QString(),
           QString::fromLatin1(kind),
           QString::number(QRandomGenerator::global()->bounded(std::numeric_limits<int>::max())));
}

/// All the bytes, in steps that zlib's counts can hold.
bool writeAll(gzFile file, QByteArrayView bytes) {
  constexpr qsizetype kStep = 1 << 30;
  for (qsizetype at = 0; at < bytes.size(); at += kStep) {
    const auto step = unsigned(std::min(kStep, bytes.size() - at));
    if (gzwrite(file, bytes.data() + at, step) != int(step)) return false;
  }
  return true;
}

QByteArray readWhole(const QString &path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool writePlain(const QString &path, QByteArrayView bytes) {
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly)) return false;
  const bool whole = file.write(bytes.data(), bytes.size()) == bytes.size() && file.flush();
  file.close();
  if (!whole) file.remove();
  return whole;
}

std::optional<QByteArray> gunzipped(const QString &path) {
  gzFile file = gzopen(QFile::encodeName(path).constData(), "r");
  if (!file) return std::nullopt;
  QByteArray bytes;
  QByteArray block(kBlock, Qt::Uninitialized);
  for (int count; (count = gzread(file, block.data(), kBlock)) > 0;) {
    bytes.append(block.constData(), count);
  }
  gzclose(file);
  return bytes;
}

}  // namespace

QByteArray compressedData(QByteArrayView bytes) {
  QByteArray result;
  for (const bool atHome : {false, true}) {
    const QString path = temporaryPath("comp", atHome);
    gzFile file = gzopen(QFile::encodeName(path).constData(), "wb");
    if (!file) continue;
    const bool written = writeAll(file, bytes);
    // Closing writes the rest, so a disk that is full may show only here.
    const bool whole = gzclose(file) == Z_OK && written;
    if (whole) result = readWhole(path);
    QFile::remove(path);
    break;
  }
  return result.isEmpty() ? bytes.toByteArray() : result;
}

std::optional<QByteArray> copyDecompressedData(QByteArrayView bytes) {
  if (bytes.isEmpty()) return std::nullopt;
  for (const bool atHome : {false, true}) {
    const QString path = temporaryPath("decomp", atHome);
    if (!writePlain(path, bytes)) continue;
    std::optional<QByteArray> result = gunzipped(path);
    QFile::remove(path);
    return result;
  }
  return std::nullopt;
}

QByteArray decompressedData(QByteArrayView bytes) {
  std::optional<QByteArray> result = copyDecompressedData(bytes);
  return result ? *result : bytes.toByteArray();
}
