#include "repairs/UnkeptFiles.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <cerrno>
#include <cstring>

#include "platform/FolderEntry.h"
#include "platform/WriteAll.h"
#include "repairs/FileIdentity.h"
#include "repairs/MergeReasons.h"
#include "support/BMLog.h"
#include "support/Format.h"
#include "support/Trash.h"

namespace unkeptFiles {

namespace {

/// What file systems take as a name, in their own bytes.
constexpr qsizetype kLongestName = 255;

bool canBeUpdated(const QString &path) {
  QFile file(path);
  return file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly);
}

/// The name under which a file is to stand as the nth of its name.
QString nameNumber(const QString &name, int number) {
  if (number == 1) return name;
  const qsizetype point = name.lastIndexOf(u'.');
  const bool hasExtension = point > 0;
  QString base = hasExtension ? name.left(point) : name;
  // Not null, which a format tells from empty.
  const QString extension = hasExtension ? name.mid(point + 1) : QStringLiteral("");
  for (;;) {
    const QString numbered = formatText(QStringLiteral("%@-%d.%@"), {base, number, extension});
    if (base.isEmpty() || QFile::encodeName(numbered).size() <= kLongestName) return numbered;
    base.chop(base.back().isLowSurrogate() ? 2 : 1);
  }
}

bool isCopyOf(const QFileInfo &source, const QString &candidate) {
  const QFileInfo there(candidate);
  return there.isFile() && there.size() == source.size() && there.lastModified() == source.lastModified() &&
         haveSameContent(source.filePath(), candidate);
}

/// An open file of the system, closed at the end.
struct OpenFile {
  explicit OpenFile(int opened) : handle(opened) {}
  ~OpenFile() {
    if (handle >= 0) ::close(handle);
  }
  OpenFile(const OpenFile &) = delete;
  int handle;
};

enum class Written { Whole, NotRead, NotWritten };

/// Gives a new file the bytes of another, its permissions and its date, and brings it to the disk. In blocks,
/// as a mapping of a file that is cut meanwhile ends the process.
Written writeCopy(int source, int copy) {
  constexpr qsizetype kBlock = 1 << 18;
  QByteArray block(kBlock, Qt::Uninitialized);
  for (;;) {
    const ssize_t count = ::read(source, block.data(), size_t(block.size()));
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return Written::NotRead;
    if (count == 0) break;
    if (!writeAll(copy, QByteArrayView(block.constData(), count))) return Written::NotWritten;
  }
  struct stat facts = {};
  if (::fstat(source, &facts) != 0) return Written::NotRead;
  // Some file systems have none; without its date it is not known as the copy again, which costs a second
  // one.
  (void)!::fchmod(copy, facts.st_mode & 0777);
  const struct timespec times[] = {facts.st_atim, facts.st_mtim};
  (void)!::futimens(copy, times);
  return ::fsync(copy) == 0 ? Written::Whole : Written::NotWritten;
}

FolderCopy failed(const QString &what, const QString &path, bool folderIsAtFault) {
  FolderCopy none;
  none.error = QStringLiteral("%1 %2: %3").arg(what, path, QString::fromUtf8(std::strerror(errno)));
  none.folderIsAtFault = folderIsAtFault;
  return none;
}

/// A whole copy of the file in the folder, under a name of no song.
FolderCopy makeUnfinished(const QString &path, const QString &folder) {
  const QString cannotRead = QStringLiteral("cannot read"), cannotWrite = QStringLiteral("cannot write to");
  const OpenFile source(::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC));
  if (source.handle < 0) return failed(cannotRead, path, false);
  struct stat facts = {};
  if (::fstat(source.handle, &facts) == 0 && !S_ISREG(facts.st_mode)) {
    errno = EISDIR;
    return failed(cannotRead, path, false);
  }
  const QString unfinished =
      folder + u"/.unfinished-"_qs + QString::number(QRandomGenerator::system()->generate64(), 36);
  const QByteArray name = QFile::encodeName(unfinished);
  const OpenFile copy(::open(name.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
  if (copy.handle < 0) return failed(cannotWrite, folder, true);
  const Written written = writeCopy(source.handle, copy.handle);
  if (written == Written::Whole) return {unfinished, false, {}, false};
  const FolderCopy none =
      written == Written::NotRead ? failed(cannotRead, path, false) : failed(cannotWrite, folder, true);
  ::unlink(name.constData());
  return none;
}

}  // namespace

Outcome trashFile(const QString &path, bool deletesOnFailure) {
  using namespace mergeReasons;
  if (doPutInTrash(path)) {
    if (!QFileInfo::exists(path)) return {UnkeptFate::Trashed, {}};
    BMLog("Trashing did not happen despite 'successful' doPutInTrash: %@", path);
  }
  if (!canBeUpdated(path)) return {UnkeptFate::Gone, aboutFile(kDeleteError, path)};
  BMLog("Recycle failure (nostop:%d): %@", int(deletesOnFailure), path);
  if (!deletesOnFailure) return {UnkeptFate::Gone, kTrashError.toString()};
  if (QFile::remove(path)) return {UnkeptFate::Deleted, {}};
  return {UnkeptFate::Gone, aboutFile(kDeleteError, path)};
}

FolderCopy safelyCopyFileAtPathToFolder(const QString &path, const QString &folder) {
  if (!QFileInfo::exists(folder)) QDir().mkpath(folder);
  const QFileInfo source(path);
  FolderCopy unfinished;
  for (int number = 1;; ++number) {
    const QString candidate = folder + u'/' + nameNumber(source.fileName(), number);
    const QFileInfo there(candidate);
    if (there.exists() || there.isSymLink()) {
      // The file itself is no copy of itself: a folder of unkept files may be one of the library's.
      if (!isCopyOf(source, candidate) || fileIdentity::areSameFile(path, candidate)) continue;
      if (!unfinished.path.isEmpty()) QFile::remove(unfinished.path);
      // An earlier run may have ended before it was brought to the disk.
      if (folderEntry::syncFolder(QFile::encodeName(folder))) return {candidate, true, {}, false};
      return failed(QStringLiteral("cannot bring to the disk"), folder, true);
    }
    if (unfinished.path.isEmpty()) unfinished = makeUnfinished(path, folder);
    if (unfinished.path.isEmpty()) return unfinished;
    const QByteArray from = QFile::encodeName(unfinished.path), to = QFile::encodeName(candidate);
    if (folderEntry::renameWithoutReplacing(from, to)) {
      if (folderEntry::syncFolder(QFile::encodeName(folder))) return {candidate, false, {}, false};
      // A power cut could take the copy, so the file stays; the next merge finds both.
      return failed(QStringLiteral("cannot bring to the disk"), folder, true);
    }
    // Somebody else took the name.
    if (errno == EEXIST) continue;
    const FolderCopy none = failed(QStringLiteral("cannot make"), candidate, true);
    QFile::remove(unfinished.path);
    return none;
  }
}

bool haveSameContent(const QString &path, const QString &other) {
  constexpr qint64 kBlock = 1 << 18;
  QFile one(path), two(other);
  if (!one.open(QIODevice::ReadOnly) || !two.open(QIODevice::ReadOnly) || one.size() != two.size())
    return false;
  for (qint64 left = one.size(); left > 0;) {
    const qint64 count = qMin(left, kBlock);
    const QByteArray first = one.read(count);
    if (first.size() != count || first != two.read(count)) return false;
    left -= count;
  }
  return true;
}

bool deleteCopiedFile(const QString &path, const QString &copy) {
  if (fileIdentity::areSameFile(path, copy) || !haveSameContent(path, copy)) return false;
  return QFile::remove(path);
}

}  // namespace unkeptFiles
