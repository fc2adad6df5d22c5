#include "audio/FileReference.h"

#include <dirent.h>
#include <sys/stat.h>

#include <QFile>
#include <QFileInfo>
#include <memory>

namespace {

/// So many entries are looked at before the search is given up.
constexpr int kEntriesLooked = 20000;

struct CloseFolder {
  void operator()(DIR *folder) const { ::closedir(folder); }
};
using Folder = std::unique_ptr<DIR, CloseFolder>;

/// Looks for one file among the entries of folders.
class Search {
 public:
  Search(quint64 deviceWanted, quint64 inodeWanted) : device(deviceWanted), inode(inodeWanted) {}

  bool isAt(const QString &path) const {
    struct stat facts = {};
    return ::stat(QFile::encodeName(path).constData(), &facts) == 0 && facts.st_ino == inode &&
           facts.st_dev == device;
  }

  /// The file in a folder; null if it is not there. With `folders` the folder's own folders are noted in it.
  QString inFolder(const QString &path, QStringList *folders = nullptr) {
    const Folder folder(::opendir(QFile::encodeName(path).constData()));
    if (!folder) return {};
    while (const dirent *entry = ::readdir(folder.get())) {
      if (++looked > kEntriesLooked) return {};
      const QString name = QFile::decodeName(entry->d_name);
      if (name == u"." || name == u"..") continue;
      const QString full = (path.endsWith(u'/') ? path : path + u'/') + name;
      if (entry->d_ino == inode && isAt(full)) return full;
      if (folders && (entry->d_type == DT_DIR || entry->d_type == DT_UNKNOWN)) folders->append(full);
    }
    return {};
  }

 private:
  const quint64 device, inode;
  int looked = 0;
};

}  // namespace

FileReference FileReference::toPath(const QString &path) {
  FileReference reference;
  struct stat facts = {};
  if (::stat(QFile::encodeName(path).constData(), &facts) != 0) return reference;
  reference.path = path;
  reference.device = facts.st_dev;
  reference.inode = facts.st_ino;
  return reference;
}

QString FileReference::resolve() const {
  if (isNull()) return {};
  Search search(device, inode);
  if (search.isAt(path)) return path;
  const QString folder = QFileInfo(path).path();
  QStringList below, beside;
  QString found = search.inFolder(folder, &below);
  const QString above = QFileInfo(folder).path();
  if (found.isNull() && above != folder) found = search.inFolder(above, &beside);
  for (const QStringList &neighbours : {below, beside}) {
    for (const QString &neighbour : neighbours) {
      if (!found.isNull()) return found;
      found = search.inFolder(neighbour);
    }
  }
  if (!found.isNull()) return found;
  // Another file in its place is what a program leaves that writes anew and renames.
  return QFile::exists(path) ? path : QString();
}
