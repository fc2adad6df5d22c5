#include "support/PrivateFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <QRandomGenerator>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "platform/WriteAll.h"

namespace {

/// A descriptor that closes itself.
struct Handle {
  int number = -1;
  explicit Handle(int opened) : number(opened) {}
  Handle(const Handle &) = delete;
  ~Handle() {
    if (number >= 0) ::close(number);
  }
};

QString failure(const char *step) {
  return QStringLiteral("%1: %2").arg(QString::fromLatin1(step), QString::fromUtf8(std::strerror(errno)));
}

/// Opens without following a link and without waiting for the other end of a pipe; -1 if it is not to be
/// trusted.
int openTrusted(const QString &path, struct stat *facts, QString *error) {
  const int opened =
      ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
  if (opened < 0) {
    *error = failure("opening");
    return -1;
  }
  const char *reason = nullptr;
  if (::fstat(opened, facts) != 0) reason = "its facts cannot be read";
  if (!reason && !S_ISREG(facts->st_mode)) reason = "no regular file";
  if (!reason && facts->st_uid != ::geteuid()) reason = "somebody else's file";
  if (!reason && (facts->st_mode & (S_IWGRP | S_IWOTH)) != 0) reason = "others may write to it";
  if (!reason && facts->st_nlink != 1) reason = "it has a second name";
  if (!reason) return opened;
  *error = QString::fromLatin1(reason);
  ::close(opened);
  return -1;
}

}  // namespace

std::optional<PrivateFile> PrivateFile::read(const QString &path, QString *error) {
  struct stat facts = {};
  const Handle handle(openTrusted(path, &facts, error));
  if (handle.number < 0) return std::nullopt;
  PrivateFile file;
  file.modified = Date::fromUnix(double(facts.st_mtim.tv_sec) + double(facts.st_mtim.tv_nsec) * 1e-9);
  QFile reader;
  if (!reader.open(handle.number, QIODevice::ReadOnly | QIODevice::Unbuffered)) {
    *error = reader.errorString();
    return std::nullopt;
  }
  file.bytes = reader.readAll();
  if (file.bytes.size() == facts.st_size) return file;
  *error = QStringLiteral("%1 of %2 bytes could be read").arg(file.bytes.size()).arg(qint64(facts.st_size));
  return std::nullopt;
}

bool PrivateFile::write(const QString &path, QByteArrayView contents, QString *error) {
  const QByteArray target = QFile::encodeName(path);
  const QByteArray temporary =
      target + '.' + QByteArray::number(QRandomGenerator::system()->generate64(), 36);
  const char *failed = nullptr;
  {
    const Handle handle(
        ::open(temporary.constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
    if (handle.number < 0) {
      *error = failure("making a file");
      return false;
    }
    if (!writeAll(handle.number, contents)) failed = "writing";
  }
  if (!failed && std::rename(temporary.constData(), target.constData()) != 0) failed = "renaming";
  if (!failed) return true;
  *error = failure(failed);
  ::unlink(temporary.constData());
  return false;
}

bool PrivateFile::remove(const QString &path) {
  return ::unlink(QFile::encodeName(path).constData()) == 0 || errno == ENOENT;
}

bool PrivateFile::exists(const QString &path) {
  struct stat facts = {};
  return ::lstat(QFile::encodeName(path).constData(), &facts) == 0;
}
