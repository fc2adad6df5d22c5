#include "keeper/library/LocationMapping.h"

#include <QDirIterator>
#include <QFileInfo>
#include <QHash>
#include <map>

#include "keeper/library/LibraryStore.h"
#include "keeper/library/TrackTable.h"
#include "platform/FileAddress.h"
#include "values/Keys.h"

namespace {

constexpr qsizetype kMostFiles = 400000;
constexpr int kTailParts = 3;

/// Artist, album and file name, without regard to case and to how accents are composed: file systems differ.
QString tailOf(const QString &path) {
  return path.section(u'/', -kTailParts).normalized(QString::NormalizationForm_C).toCaseFolded();
}

QStringList locations(LibraryStore &store) {
  QStringList paths;
  store.tracks().visitColumn(keys::Location, [&](TrackRow, const Value &location) {
    if (!location.toText().startsWith(QStringLiteral("file:"))) return;
    const QString path = pathOfFileAddress(location.toText());
    if (!path.isEmpty()) paths.append(path);
  });
  return paths;
}

QStringList missingAmong(const QStringList &paths) {
  QStringList missing;
  for (const QString &path : paths) {
    if (!QFileInfo::exists(path)) missing.append(path);
  }
  return missing;
}

QHash<QString, QString> filesByTail(const QStringList &folders) {
  QHash<QString, QString> files;
  for (const QString &folder : folders) {
    QDirIterator walk(folder, QDir::Files | QDir::NoSymLinks, QDirIterator::Subdirectories);
    while (walk.hasNext() && files.size() < kMostFiles) {
      const QString path = walk.next();
      files.insert(tailOf(path), path);
    }
  }
  return files;
}

/// The two folders in which the two paths go on alike.
LocationMapping differingFronts(const QString &from, const QString &to) {
  QStringList fromParts = from.split(u'/');
  QStringList toParts = to.split(u'/');
  while (fromParts.size() > 2 && toParts.size() > 2 && fromParts.last() == toParts.last()) {
    fromParts.removeLast();
    toParts.removeLast();
  }
  return {fromParts.join(u'/'), toParts.join(u'/')};
}

qsizetype countFound(const QStringList &paths, const LocationMapping &mapping) {
  qsizetype found = 0;
  for (const QString &path : paths) {
    const std::optional<QString> mapped = mapping.apply(path);
    found += mapped && QFileInfo::exists(*mapped);
  }
  return found;
}

/// The fronts of a missing file and of the one that was found for it, down to where the tails begin.
LocationMapping wholeFronts(const QString &from, const QString &to) {
  return {from.section(u'/', 0, -kTailParts - 1), to.section(u'/', 0, -kTailParts - 1)};
}

}  // namespace

std::optional<LocationMapping> LocationMapping::of(const QString &from, const QString &to) {
  LocationMapping mapping{from, to};
  const bool hasDrive = mapping.from.size() > 1 && mapping.from[0].isLetter() && mapping.from[1] == u':';
  if (hasDrive || mapping.from.startsWith(u'\\')) mapping.from.replace(u'\\', u'/');
  if (hasDrive) mapping.from.prepend(u'/');
  for (QString *side : {&mapping.from, &mapping.to}) {
    while (side->size() > 1 && side->endsWith(u'/')) side->chop(1);
  }
  if (!mapping.from.startsWith(u'/') || !mapping.to.startsWith(u'/')) return {};
  return mapping;
}

std::optional<QString> LocationMapping::apply(const QString &path) const {
  if (!path.startsWith(from)) return {};
  const QString rest = path.mid(from == QStringLiteral("/") ? 0 : from.size());
  if (!rest.isEmpty() && !rest.startsWith(u'/')) return {};
  return to == QStringLiteral("/") && !rest.isEmpty() ? rest : to + rest;
}

std::optional<MappingProposal> proposeMapping(LibraryStore &store, const QStringList &folders) {
  const QStringList paths = locations(store);
  const QStringList missing = missingAmong(paths);
  if (missing.size() * 2 <= paths.size()) return {};
  const QHash<QString, QString> files = filesByTail(folders);
  // A few hundred files tell the folders apart as well as all of them.
  std::map<std::pair<QString, QString>, qsizetype> votes;
  const qsizetype stride = qMax<qsizetype>(1, missing.size() / 500);
  for (qsizetype index = 0; index < missing.size(); index += stride) {
    const auto file = files.constFind(tailOf(missing[index]));
    if (file == files.constEnd()) continue;
    for (const LocationMapping &one :
         {differingFronts(missing[index], *file), wholeFronts(missing[index], *file)}) {
      ++votes[{one.from, one.to}];
    }
  }
  MappingProposal best{{}, paths.size(), missing.size(), 0};
  for (const auto &[fronts, count] : votes) {
    if (count * 20 < missing.size() / stride) continue;
    const LocationMapping mapping{fronts.first, fronts.second};
    const qsizetype found = countFound(missing, mapping);
    if (found > best.found) best.mapping = mapping, best.found = found;
  }
  return best.found > 0 ? std::optional(best) : std::nullopt;
}

QStringList mappingFolders(LibraryStore &store, const QString &xmlPath) {
  QStringList folders{QFileInfo(xmlPath).absolutePath()};
  const QString media = pathOfFileAddress(store.root().value(keys::MusicFolder).toText());
  if (!media.isEmpty() && media != QStringLiteral("/")) folders.append(media);
  folders.removeDuplicates();
  return folders;
}
