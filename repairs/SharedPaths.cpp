#include "repairs/SharedPaths.h"

#include <QSet>

SharedPaths::SharedPaths(const std::vector<QString> &paths) {
  QSet<QString> seen;
  seen.reserve(qsizetype(paths.size()));
  for (const QString &path : paths) {
    const qsizetype before = seen.size();
    seen.insert(path);
    if (seen.size() == before) ++counts[path];
  }
  // The first of each stands in the set alone.
  for (int &count : counts) ++count;
}

bool SharedPaths::isNamedByMoreThan(const QString &path, int tracks) const {
  const auto found = counts.constFind(path);
  return found != counts.constEnd() && *found > tracks;
}

void SharedPaths::trackIsGone(const QString &path) {
  const auto found = counts.find(path);
  if (found != counts.end()) --*found;
}
