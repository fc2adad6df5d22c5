#include "platform/qt/FreedesktopTrash.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <cerrno>
#include <cstring>

#include "platform/FolderEntry.h"
#include "platform/qt/TrashFolder.h"
#include "platform/qt/WholeCopy.h"

namespace {

QByteArray parentOf(const QByteArray &path) {
  const qsizetype slash = path.lastIndexOf('/');
  return slash <= 0 ? QByteArrayLiteral("/") : path.left(slash);
}

/// The path with the links of its folder resolved, but not a link at its end; empty for what has no name.
QByteArray resolved(const QString &path) {
  QString plain = path;
  while (plain.size() > 1 && plain.endsWith(u'/')) plain.chop(1);
  const QFileInfo info(plain);
  const QString folder = QFileInfo(info.absolutePath()).canonicalFilePath(), name = info.fileName();
  if (folder.isEmpty() || name.isEmpty() || name == u"." || name == u"..") return {};
  return QFile::encodeName(folder.endsWith(u'/') ? folder + name : folder + u'/' + name);
}

/// The file system that holds a folder, or would hold it if it stood.
dev_t deviceOf(QByteArray folder) {
  struct stat facts = {};
  while (::stat(folder.constData(), &facts) != 0 && folder != "/") folder = parentOf(folder);
  return facts.st_dev;
}

bool moveInto(const TrashFolder &trash, const QByteArray &original) {
  const auto name = trash.reserve(original);
  if (!name) return false;
  if (folderEntry::renameWithoutReplacing(original, trash.fileOf(*name))) return true;
  trash.release(*name);
  return false;
}

/// Copies, and removes the original when the copy has its name in the trash and is on the disk. Why it did
/// not end so, or null.
const char *copyInto(const TrashFolder &trash, const QByteArray &original) {
  const auto name = trash.reserve(original);
  if (!name) return "making its information file";
  const QByteArray unfinished = trash.filesFolder() + "/.unfinished-" +
                                QByteArray::number(QRandomGenerator::system()->generate64(), 36);
  WholeCopy copy(original, unfinished);
  if (!copy.make()) {
    trash.release(*name);
    return "copying to another disk";
  }
  WholeCopy::Removed removed = WholeCopy::Removed::Nothing;
  const QByteArray target = trash.fileOf(*name);
  if (!folderEntry::renameWithoutReplacing(unfinished, target)) {
    copy.removeCopy();
    trash.release(*name);
    return "naming the copy";
  }
  if (trash.isOnDisk(*name)) removed = copy.removeSource();
  if (removed == WholeCopy::Removed::All) return nullptr;
  if (removed == WholeCopy::Removed::Some) return "removing all of it: the trash holds a whole copy";
  if (folderEntry::renameWithoutReplacing(target, unfinished)) copy.removeCopy();
  trash.release(*name);
  return "removing it";
}

/// A folder for one user only, made if it is missing. A link, or somebody else's folder, is none.
bool isOwnFolder(const QByteArray &folder) {
  if (::mkdir(folder.constData(), 0700) == 0) return true;
  struct stat facts = {};
  if (errno != EEXIST || ::lstat(folder.constData(), &facts) != 0) return false;
  if (S_ISDIR(facts.st_mode) && facts.st_uid == ::geteuid()) return true;
  qWarning("!! %s is not used as a trash: it is no folder, or somebody else's", folder.constData());
  return false;
}

/// A folder that an administrator made for the trashes of all users.
bool isSharedFolder(const QByteArray &folder) {
  struct stat facts = {};
  if (::lstat(folder.constData(), &facts) != 0) return false;
  if (S_ISDIR(facts.st_mode) && (facts.st_mode & S_ISVTX) != 0) return true;
  qWarning("!! %s is not used as a trash: it is no folder, or has no sticky bit", folder.constData());
  return false;
}

/// The user's trash in the top folder of a file system; empty if none can be had.
QByteArray trashOnTop(const QByteArray &top) {
  const QByteArray user = QByteArray::number(::geteuid());
  const QByteArray shared = (top == "/" ? top : top + '/') + ".Trash";
  if (isSharedFolder(shared) && isOwnFolder(shared + '/' + user)) return shared + '/' + user;
  return isOwnFolder(shared + '-' + user) ? shared + '-' + user : QByteArray();
}

bool isMountPoint(const QByteArray &path, const struct stat &facts) {
  return S_ISDIR(facts.st_mode) && (path == "/" || facts.st_dev != deviceOf(parentOf(path)));
}

}  // namespace

QByteArray FreedesktopTrash::topOfFileSystem(const QByteArray &folder) {
  QByteArray top = folder;
  while (top != "/" && deviceOf(parentOf(top)) == deviceOf(folder)) top = parentOf(top);
  return top;
}

FreedesktopTrash::FreedesktopTrash(const QString &homeTrash, FindTop top)
    : home(QFile::encodeName(homeTrash)), findTop(std::move(top)) {}

bool FreedesktopTrash::put(const QString &path, QString *error) const {
  const QByteArray original = resolved(path);
  struct stat facts = {};
  const char *failed = nullptr;
  errno = ENOENT;
  if (home.isEmpty()) {
    failed = "looking for the trash";
  } else if (original.isEmpty() || ::lstat(original.constData(), &facts) != 0) {
    failed = "looking for it";
  } else if (isMountPoint(original, facts)) {
    errno = EBUSY;
    failed = "it is the top of a file system";
  } else if (::faccessat(AT_FDCWD, parentOf(original).constData(), W_OK | X_OK, AT_EACCESS) != 0) {
    failed = "taking it from its folder";
  } else {
    failed = move(original, facts.st_dev);
  }
  if (failed && error) {
    const QString reason = QString::fromUtf8(std::strerror(errno));
    *error =
        QStringLiteral("cannot put %1 in the trash (%2): %3").arg(path, QString::fromUtf8(failed), reason);
  }
  return !failed;
}

const char *FreedesktopTrash::move(const QByteArray &original, dev_t device) const {
  const TrashFolder homeTrash(home);
  if (device == deviceOf(home)) {
    if (moveInto(homeTrash, original)) return nullptr;
    if (errno != EXDEV) return "moving it";
  } else {
    const QByteArray top = findTop(parentOf(original)), folder = trashOnTop(top);
    if (!folder.isEmpty() && moveInto(TrashFolder(folder, top), original)) return nullptr;
  }
  return copyInto(homeTrash, original);
}
