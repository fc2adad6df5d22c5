#include "app/library/FileTreeWalk.h"

#include <dirent.h>
#include <sys/stat.h>

#include <QFile>
#include <memory>
#include <vector>

#include "platform/Platform.h"
#include "support/BMLog.h"

namespace {

enum class EntryKind { Gone, Link, Folder, File };

struct Entry {
  QByteArray name;
  unsigned char type;
};

struct CloseFolder {
  void operator()(DIR *folder) const { ::closedir(folder); }
};

/// A folder's entries in the order of its listing; the folder is closed again, so that a deep tree needs no
/// more than one open folder.
std::vector<Entry> entriesOf(const QByteArray &folder) {
  std::vector<Entry> entries;
  const std::unique_ptr<DIR, CloseFolder> listing(::opendir(folder.constData()));
  while (const dirent *entry = listing ? ::readdir(listing.get()) : nullptr) {
    const QByteArrayView name(entry->d_name);
    if (!name.isEmpty() && name != QByteArrayView(".") && name != QByteArrayView("..")) {
      entries.push_back({name.toByteArray(), entry->d_type});
    }
  }
  return entries;
}

/// What an entry is; the listing mostly knows, and only a link or a silent file system is asked.
EntryKind kindOf(const QByteArray &path, unsigned char listed) {
  if (listed == DT_DIR) return EntryKind::Folder;
  if (listed != DT_LNK && listed != DT_UNKNOWN) return EntryKind::File;
  struct stat facts = {};
  if (::stat(path.constData(), &facts) != 0) return EntryKind::Gone;
  if (listed == DT_LNK) return EntryKind::Link;
  struct stat own = {};
  if (::lstat(path.constData(), &own) == 0 && S_ISLNK(own.st_mode)) return EntryKind::Link;
  return S_ISDIR(facts.st_mode) ? EntryKind::Folder : EntryKind::File;
}

bool leadsToFolder(const QString &link) {
  struct stat facts = {};
  return ::stat(QFile::encodeName(link).constData(), &facts) == 0 && S_ISDIR(facts.st_mode);
}

/// False for a name that is none in the file system's encoding: it leads nowhere.
bool isText(const QString &name, const QByteArray &stored) {
  return !name.contains(QChar::ReplacementCharacter) || QFile::encodeName(name) == stored;
}

class Walk {
 public:
  Walk(const QString &base, bool entersPackages, quint32 count)
      : baseLength(base.size()), enterPackages(entersPackages), maxCount(count) {}

  void visit(const QString &folder, QStringList &found) {
    const qsizetype before = found.size();
    const QByteArray bytes = QFile::encodeName(folder);
    for (const Entry &entry : entriesOf(bytes)) {
      const QString name = QFile::decodeName(entry.name);
      const QString path = folder.endsWith(u'/') ? folder + name : folder + u'/' + name;
      // What is no longer than the base lies outside it: not listed, whatever it is, but still entered.
      const bool isListed = path.size() > baseLength;
      EntryKind kind = EntryKind::Gone;
      if (isText(name, entry.name)) kind = kindOf(bytes + '/' + entry.name, entry.type);
      if (kind == EntryKind::Gone) {
        BMLog("!!! rfpid !exists: %@", path);
        continue;
      }
      if (kind == EntryKind::Link && (isListed || !leadsToFolder(path))) continue;
      if (isListed) found.append(path.mid(baseLength + 1));
      if (kind == EntryKind::File) continue;
      if (!enterPackages && platform().fileFacts->isPackage(path)) continue;
      visit(path, found);
      if (maxCount != 0 && quint64(found.size() - before) >= maxCount) return;
    }
  }

 private:
  const qsizetype baseLength;
  const bool enterPackages;
  const quint32 maxCount;
};

QString withoutSlash(QString path) {
  while (path.size() > 1 && path.endsWith(u'/')) path.chop(1);
  return path;
}

}  // namespace

namespace BMUtility {

std::optional<QStringList> recursiveFilePathsInDirectoryBasePathEnterPackagesMaxCount(const QString &folder,
                                                                                      const QString &base,
                                                                                      bool enterPackages,
                                                                                      quint32 maxCount) {
  QStringList found;
  try {
    // The root's own slash is the one between it and the first name.
    const QString top = withoutSlash(base);
    Walk(top == u"/" ? QString() : top, enterPackages, maxCount).visit(withoutSlash(folder), found);
  } catch (const std::exception &problem) {
    BMLog("recursiveFilePathsInDirectory exception %@", QString::fromUtf8(problem.what()));
  }
  return found.isEmpty() ? std::nullopt : std::optional(found);
}

std::optional<QStringList> recursiveFilePathsInDirectoryEnterPackagesMaxCount(const QString &folder,
                                                                              bool enterPackages,
                                                                              quint32 maxCount) {
  const double start = platform().clock->now().seconds;
  std::optional<QStringList> found =
      recursiveFilePathsInDirectoryBasePathEnterPackagesMaxCount(folder, folder, enterPackages, maxCount);
  const double seconds = platform().clock->now().seconds - start;
  const qsizetype count = found ? found->size() : 0;
  BMLog("[recurFPID %ld items in %.2f seconds (%.6f per item) @ %@]", qint64(count), seconds,
        seconds / double(count), withoutSlash(folder).section(u'/', -1));
  if (found && maxCount != 0 && quint64(count) > maxCount) found->resize(qsizetype(maxCount));
  return found;
}

}  // namespace BMUtility
