#include "support/TopLevelDirectories.h"

namespace {

using Counts = std::vector<std::pair<QString, qsizetype>>;

/// A path less its last component; empty if nothing is left.
QString folderOf(const QString &path) {
  const qsizetype slash = path.lastIndexOf(u'/');
  return slash < 0 ? QString() : (slash == 0 && path.size() > 1 ? QStringLiteral("/") : path.left(slash));
}

QString cutAtFragments(QString folder, const QStringList &stopFragments) {
  for (const QString &fragment : stopFragments) {
    const qsizetype place = folder.indexOf(fragment);
    if (place > 0) folder.truncate(place + fragment.size() - 1);
  }
  return folder;
}

/// Raises the count of the last folder that the given one begins with.
bool countBelow(Counts &counts, const QString &folder) {
  for (auto entry = counts.rbegin(); entry != counts.rend(); ++entry) {
    if (folder.startsWith(entry->first)) {
      ++entry->second;
      return true;
    }
  }
  return false;
}

/// Shortens the folder part by part until a known folder lies below it, which it then replaces.
bool replaceBelow(Counts &counts, QString folder, qsizetype minComponents) {
  while (folder.count(u'/') > minComponents) {
    folder = folderOf(folder);
    for (auto entry = counts.rbegin(); entry != counts.rend(); ++entry) {
      if (!entry->first.startsWith(folder)) continue;
      entry->first = folder;
      ++entry->second;
      return true;
    }
  }
  return false;
}

}  // namespace

Counts BMUtility::topLevelDirectoriesFromPathsStopFragmentsMinComponents(const std::vector<QString> &paths,
                                                                         const QStringList &stopFragments,
                                                                         qsizetype minComponents) {
  Counts counts;
  for (const QString &path : paths) {
    const QString folder = cutAtFragments(folderOf(path), stopFragments);
    if (folder.count(u'/') + 1 < 3 || folder.contains(QStringLiteral(".Trash"))) continue;
    if (countBelow(counts, folder) || replaceBelow(counts, folder, minComponents)) continue;
    counts.emplace_back(folder, 1);
  }
  return counts;
}
