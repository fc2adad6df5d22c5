#include "keeper/library/ExportFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "keeper/library/StoreError.h"
#include "keeper/library/StoreUpgrade.h"
#include "platform/WriteAll.h"

namespace {

const QString kEnding = QStringLiteral(".export");

QString hiddenPrefix(const QString &place) {
  return u'.' + QFileInfo(place).fileName() + u'.';
}

}  // namespace

ExportFile::ExportFile(const QString &place_) : place(place_) {
  QDir folder(QFileInfo(place).path());
  for (const QString &name : folder.entryList(QDir::Files | QDir::Hidden)) {
    if (name.startsWith(hiddenPrefix(place)) && name.endsWith(kEnding)) folder.remove(name);
  }
  temporary = folder.path() + u'/' + hiddenPrefix(place) +
              QString::number(QRandomGenerator::system()->generate64(), 36) + kEnding;
  handle = ::open(QFile::encodeName(temporary).constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
  if (handle < 0) fail("making a temporary file");
}

ExportFile::~ExportFile() {
  if (handle >= 0) ::close(handle);
  if (!temporary.isEmpty()) ::unlink(QFile::encodeName(temporary).constData());
}

void ExportFile::fail(const char *step) const {
  const int reason = errno;
  throw StoreError{QStringLiteral("cannot write %1 (%2): %3")
                       .arg(place, QString::fromLatin1(step), QString::fromUtf8(std::strerror(reason)))};
}

void ExportFile::write(QByteArrayView bytes) {
  if (!writeAll(handle, bytes)) fail("writing");
}

void ExportFile::close() {
  if (::fsync(handle) != 0) fail("reaching the disk");
  if (::close(std::exchange(handle, -1)) != 0) fail("closing");
}

void ExportFile::takePlace() {
  if (std::rename(QFile::encodeName(temporary).constData(), QFile::encodeName(place).constData()) != 0) {
    fail("renaming");
  }
  temporary.clear();
  const QByteArray folder = QFile::encodeName(QFileInfo(place).path());
  const int opened = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (opened < 0) fail("opening the folder");
  // Some file systems cannot bring a folder to the disk; their renames are as safe as they get.
  const bool isDone = ::fsync(opened) == 0 || errno == EINVAL || errno == ENOTSUP;
  ::close(opened);
  if (!isDone) fail("bringing the folder to the disk");
}

QString fileStamp(const QString &path) {
  struct stat facts = {};
  if (::lstat(QFile::encodeName(path).constData(), &facts) != 0) return {};
  const qint64 date = qint64(facts.st_mtim.tv_sec) * 1000000000 + facts.st_mtim.tv_nsec;
  return QStringLiteral("%1:%2:%3:%4").arg(facts.st_dev).arg(facts.st_ino).arg(facts.st_size).arg(date);
}

QString keepUnderAnotherName(const QString &path, const QString &words) {
  const QFileInfo file(path);
  const QString base = QStringLiteral("%1/%2 (%3)").arg(file.path(), file.completeBaseName(), words);
  // A second name never replaces another file, and the first one stays until the new file has its place.
  for (int tries = 0; tries < 100; ++tries) {
    const QString kept = freePath(base, u'.' + file.suffix());
    if (::link(QFile::encodeName(path).constData(), QFile::encodeName(kept).constData()) == 0) return kept;
    if (errno == EEXIST) continue;
    // A file system without second names: a copy does the same.
    if (QFile::copy(path, kept)) return kept;
    break;
  }
  throw StoreError{QStringLiteral("cannot keep %1 under another name").arg(path)};
}
