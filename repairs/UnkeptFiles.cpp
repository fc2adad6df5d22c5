#include "repairs/UnkeptFiles.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cstring>

#include "platform/AtomicFile.h"
#include "repairs/FileIdentity.h"
#include "repairs/MergeReasons.h"
#include "support/BMLog.h"
#include "support/Format.h"
#include "support/Trash.h"

namespace unkeptFiles {

namespace {

/// What file systems take as a name, in their own bytes. Names of ours leave room for the beginning and the
/// end that an unfinished file is given.
constexpr qsizetype kLongestName = 255;
constexpr qsizetype kRoomForTemporary = 24;

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

/// Writes the copy whole under a name of its own and gives it its place and date.
bool makeCopy(const QString &path, const QString &candidate, QString *error) {
  QFile source(path);
  if (!source.open(QIODevice::ReadOnly)) {
    *error = QStringLiteral("cannot read %1: %2").arg(path, source.errorString());
    return false;
  }
  const qint64 size = source.size();
  const uchar *bytes = size ? source.map(0, size) : nullptr;
  if (size && !bytes) {
    *error = QStringLiteral("cannot read %1: %2").arg(path, source.errorString());
    return false;
  }
  const QDateTime date = QFileInfo(path).lastModified();
  // An unfinished file's name is longer than its own, and some names have no room for that.
  const QString name = QFileInfo(candidate).fileName();
  const bool isLong = QFile::encodeName(name).size() > kLongestName - kRoomForTemporary;
  const QString first =
      isLong ? QFileInfo(candidate).path() + QStringLiteral("/.unfinished-%1").arg(qHash(name)) : candidate;
  if (!writeFileAtomically(first, QByteArrayView(bytes, size), true, error)) return false;
  QFile copy(first);
  // Without its date it would not be known as the copy again, which costs a second one at worst.
  if (copy.open(QIODevice::ReadWrite)) copy.setFileTime(date, QFileDevice::FileModificationTime);
  copy.close();
  if (!isLong || QFile::rename(first, candidate)) return true;
  *error = QStringLiteral("cannot make %1").arg(candidate);
  QFile::remove(first);
  return false;
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
  FolderCopy copy;
  if (!QFileInfo::exists(folder)) QDir().mkpath(folder);
  const QFileInfo source(path);
  for (int number = 1;; ++number) {
    const QString candidate = folder + u'/' + nameNumber(source.fileName(), number);
    const QFileInfo there(candidate);
    if (!there.exists() && !there.isSymLink()) {
      if (makeCopy(path, candidate, &copy.error)) copy.path = candidate;
      return copy;
    }
    // The file itself is no copy of itself: a folder of unkept files may be one of the library's.
    if (isCopyOf(source, candidate) && !fileIdentity::areSameFile(path, candidate)) {
      copy.path = candidate;
      copy.wasThere = true;
      return copy;
    }
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
