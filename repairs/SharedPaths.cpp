#include "repairs/SharedPaths.h"

#include <QFileInfo>
#include <QSet>

#include "values/Keys.h"

namespace {

QString nameOf(const QString &path) {
  return path.mid(path.lastIndexOf(u'/') + 1);
}

}  // namespace

SharedPaths::SharedPaths(const std::vector<QString> &paths, const Array &rows) {
  QSet<QString> names;
  for (const Value &row : rows) names.insert(nameOf(row.toDictionary().value(keys::Path).toText()));
  QSet<QString> seen;
  for (const QString &path : paths) {
    if (!names.contains(nameOf(path))) continue;
    const QString file = canonical(path);
    const qsizetype before = seen.size();
    seen.insert(file);
    if (seen.size() == before) ++counts[file];
  }
  // The first of each stands in the set alone.
  for (int &count : counts) ++count;
}

QString SharedPaths::canonical(const QString &path) const {
  const qsizetype slash = path.lastIndexOf(u'/');
  if (slash <= 0) return path;
  const QString folder = path.left(slash);
  auto found = folders.constFind(folder);
  if (found == folders.constEnd()) {
    // A folder that is gone leads nowhere and is known by its text.
    const QString real = QFileInfo(folder).canonicalFilePath();
    found = folders.insert(folder, real.isEmpty() ? folder : real);
  }
  return *found + path.mid(slash);
}

bool SharedPaths::isNamedByMoreThan(const QString &path, int tracks) const {
  if (counts.isEmpty()) return false;
  const auto found = counts.constFind(canonical(path));
  return found != counts.constEnd() && *found > tracks;
}

void SharedPaths::trackIsGone(const QString &path) {
  ++gone[path];
  const auto found = counts.find(canonical(path));
  if (found != counts.end()) --*found;
}

void SharedPaths::takeGoneFrom(std::vector<QString> &paths) const {
  if (gone.isEmpty()) return;
  QHash<QString, int> left = gone;
  std::erase_if(paths, [&](const QString &path) {
    const auto found = left.find(path);
    return found != left.end() && (*found)-- > 0;
  });
}
