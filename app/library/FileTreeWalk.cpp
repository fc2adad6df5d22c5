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

/// A folder's entries in the order of its listing, read at once, so that a deep tree needs no more than one
/// open folder. Names lie one behind the other.
class Listing {
 public:
  struct Entry {
    qsizetype start, length;
    unsigned char type;
  };

  explicit Listing(const QByteArray &folder) {
    const std::unique_ptr<DIR, CloseFolder> open(::opendir(folder.constData()));
    while (const dirent *entry = open ? ::readdir(open.get()) : nullptr) {
      const QByteArrayView name(entry->d_name);
      if (name.isEmpty() || name == QByteArrayView(".") || name == QByteArrayView("..")) continue;
      entries.push_back({names.size(), name.size(), entry->d_type});
      names.append(name);
    }
  }

  auto begin() const { return entries.begin(); }
  auto end() const { return entries.end(); }
  /// Valid as long as the listing.
  QByteArray nameOf(const Entry &entry) const {
    return QByteArray::fromRawData(names.constData() + entry.start, entry.length);
  }

 private:
  struct CloseFolder {
    void operator()(DIR *folder) const { ::closedir(folder); }
  };
  std::vector<Entry> entries;
  QByteArray names;
};

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

bool leadsToFolder(const QByteArray &link) {
  struct stat facts = {};
  return ::stat(link.constData(), &facts) == 0 && S_ISDIR(facts.st_mode);
}

/// False for a name that is none in the file system's encoding: it leads nowhere.
bool isText(const QString &name, const QByteArray &stored) {
  return !name.contains(QChar::ReplacementCharacter) || QFile::encodeName(name) == stored;
}

class Walk {
 public:
  Walk(const QString &base, bool entersPackages, quint32 count)
      : baseLength(base.size()), enterPackages(entersPackages), maxCount(count) {}

  /// Walks a folder that ends in a slash, as a text and as the disk names it.
  void visit(const QString &folder, const QByteArray &stored, QStringList &found) {
    const qsizetype before = found.size();
    // Below the base all relative paths of a folder begin alike.
    const bool isBelow = folder.size() > baseLength;
    const QString prefix = isBelow ? folder.mid(baseLength + 1) : QString();
    const Listing listing(stored);
    for (const Listing::Entry &entry : listing) {
      const QByteArray storedName = listing.nameOf(entry);
      const QString name = QFile::decodeName(storedName);
      EntryKind kind = EntryKind::Gone;
      if (isText(name, storedName)) {
        const bool isKnown = entry.type == DT_REG || entry.type == DT_DIR;
        kind = kindOf(isKnown ? QByteArray() : stored + storedName, entry.type);
      }
      if (kind == EntryKind::Gone) {
        BMLog("!!! rfpid !exists: %@", folder + name);
        continue;
      }
      // What is no longer than the base lies outside it: not listed, whatever it is, but still entered.
      const bool isListed = folder.size() + name.size() > baseLength;
      if (kind == EntryKind::Link && (isListed || !leadsToFolder(stored + storedName))) continue;
      if (isListed) found.append(isBelow ? prefix + name : (folder + name).mid(baseLength + 1));
      if (kind == EntryKind::File) continue;
      if (!enterPackages && platform().fileFacts->isPackage(folder + name)) continue;
      visit(folder + name + u'/', stored + storedName + '/', found);
      if (maxCount != 0 && quint64(found.size() - before) >= maxCount) return;
    }
  }

 private:
  const qsizetype baseLength;
  const bool enterPackages;
  const quint32 maxCount;
};

/// A folder's path without a slash at its end; that of the root is empty then.
QString withoutSlash(QString path) {
  while (path.endsWith(u'/')) path.chop(1);
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
    const QString start = withoutSlash(folder) + u'/';
    Walk(withoutSlash(base), enterPackages, maxCount).visit(start, QFile::encodeName(start), found);
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
