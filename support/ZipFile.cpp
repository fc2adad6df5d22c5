#include "support/ZipFile.h"

#include <zip.h>

#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

namespace {

QString failure(const QString &path, const char *reason) {
  return QStringLiteral("cannot write %1: %2").arg(path, QString::fromUtf8(reason));
}

/// Adds the file and closes the archive, which is when libzip reads and writes. Gives the archive up on
/// failure.
bool fillAndClose(zip_t *archive, const QByteArray &source, const QByteArray &name) {
  zip_source_t *contents = zip_source_file(archive, source.constData(), 0, -1);
  if (contents && zip_file_add(archive, name.constData(), contents, ZIP_FL_ENC_UTF_8) < 0) {
    zip_source_free(contents);
    contents = nullptr;
  }
  return contents && zip_close(archive) == 0;
}

}  // namespace

bool writeZipOfFile(const QString &zipPath, const QString &sourcePath, QString *error) {
  const QByteArray partial = QFile::encodeName(zipPath + u".part"_qs);
  int code = 0;
  zip_t *archive = zip_open(partial.constData(), ZIP_CREATE | ZIP_TRUNCATE, &code);
  if (!archive) {
    zip_error_t reason;
    zip_error_init_with_code(&reason, code);
    *error = failure(zipPath, zip_error_strerror(&reason));
    zip_error_fini(&reason);
    return false;
  }
  if (!fillAndClose(archive, QFile::encodeName(sourcePath), QFileInfo(sourcePath).fileName().toUtf8())) {
    *error = failure(zipPath, zip_strerror(archive));
    zip_discard(archive);
    std::remove(partial.constData());
    return false;
  }
  if (std::rename(partial.constData(), QFile::encodeName(zipPath).constData()) == 0) return true;
  *error = failure(zipPath, std::strerror(errno));
  std::remove(partial.constData());
  return false;
}
