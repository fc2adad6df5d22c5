#include "ui/MergeSummary.h"

#include "bridge/LocalizedMessage.h"
#include "support/SizeText.h"

namespace {

/// The text "MergeSummary-<name>", or where it is about one thing, "MergeSummary-<name>One".
QString counted(const QString &name, qint64 count) {
  const QString key = QStringLiteral("MergeSummary-") + name;
  return count == 1 ? localizedMessage(key + QStringLiteral("One")) : localizedMessage(key, count);
}

QString totalsLine(const char *when, const MergeTotals &totals) {
  return localizedMessage(QStringLiteral("MergeSummary-") + QLatin1String(when), totals.tracks, totals.plays,
                          totals.skips, totals.playlistEntries, totals.files, sizeText(totals.bytes));
}

QString filesLine(const QString &name, const MergeSummary::Files &files) {
  return localizedMessage(QStringLiteral("MergeSummary-") + name,
                          counted(QStringLiteral("Files"), files.count), sizeText(files.bytes),
                          localizedMessage(QStringLiteral("UnkeptPlaylist")));
}

/// The names as far as they fit into a few lines; the groups tell them all.
QString playlistsLine(const QStringList &names) {
  constexpr qsizetype kMost = 10, kLongest = 40;
  QStringList shown;
  for (const QString &name : names.first(qMin(names.size(), kMost))) {
    const QString line = name.simplified();
    shown << (line.size() > kLongest ? line.left(kLongest) + u'…' : line);
  }
  const QString list = shown.join(QStringLiteral(", "));
  return names.size() > kMost
             ? localizedMessage(QStringLiteral("MergeSummary-PlaylistsMore"), list, names.size() - kMost)
             : localizedMessage(QStringLiteral("MergeSummary-Playlists"), list);
}

bool isInFolder(const MergedGroup::Unkept &file) {
  return file.fate == UnkeptFate::Moved || file.fate == UnkeptFate::AlreadyInFolder;
}

}  // namespace

MergeSummary::MergeSummary(const MergeReport::Contents &report)
    : groups(report.groups), failures(report.failures), before(report.before), after(report.after) {
  const auto note = [](Files *files, const MergedGroup::Unkept &file) {
    ++files->count;
    files->bytes += file.bytes;
  };
  for (const MergedGroup &group : groups) {
    ++(group.complete ? mergedGroups : unfinishedGroups);
    for (const MergedGroup::Unkept &file : group.unkept) {
      if (file.removed) ++removedTracks;
      if (file.fate == UnkeptFate::Trashed) note(&trashed, file);
      if (isInFolder(file) && file.leftLibrary) note(&moved, file);
      if (file.fate == UnkeptFate::Deleted) note(&deleted, file);
      if (file.fate == UnkeptFate::Collected) note(&collected, file);
      if (file.fate == UnkeptFate::Shared) note(&shared, file);
    }
    for (const QString &name : group.playlists) {
      if (!playlists.contains(name)) playlists.append(name);
    }
  }
}

QString MergeSummary::headline() const {
  QStringList parts{counted(QStringLiteral("Groups"), mergedGroups)};
  if (trashed.count > 0)
    parts << localizedMessage(QStringLiteral("MergeSummary-InTrash"), sizeText(trashed.bytes));
  if (moved.count > 0)
    parts << localizedMessage(QStringLiteral("MergeSummary-InFolder"), sizeText(moved.bytes));
  if (deleted.count > 0)
    parts << localizedMessage(QStringLiteral("MergeSummary-Freed"), sizeText(deleted.bytes));
  if (!failures.empty()) parts << counted(QStringLiteral("Failures"), qint64(failures.size()));
  return parts.join(QStringLiteral(", "));
}

QStringList MergeSummary::lines() const {
  QStringList told;
  if (trashed.count > 0) told << filesLine(QStringLiteral("Trashed"), trashed);
  if (moved.count > 0) told << filesLine(QStringLiteral("Moved"), moved);
  if (deleted.count > 0) told << filesLine(QStringLiteral("Deleted"), deleted);
  if (collected.count > 0) told << filesLine(QStringLiteral("Collected"), collected);
  if (shared.count > 0) told << counted(QStringLiteral("Shared"), shared.count);
  if (removedTracks > 0) told << counted(QStringLiteral("Removed"), removedTracks);
  if (!playlists.isEmpty()) told << playlistsLine(playlists);
  if (unfinishedGroups > 0) told << counted(QStringLiteral("Unfinished"), unfinishedGroups);
  if (before && after) told << totalsLine("Before", *before) << totalsLine("After", *after);
  return told;
}

QString MergeSummary::words(const MergedGroup::Unkept &file) {
  if (isInFolder(file) && !file.leftLibrary) return localizedMessage(QStringLiteral("MergeFate-Copied"));
  switch (file.fate) {
    case UnkeptFate::Trashed:
      return localizedMessage(QStringLiteral("MergeFate-Trashed"));
    case UnkeptFate::Moved:
      return localizedMessage(QStringLiteral("MergeFate-Moved"));
    case UnkeptFate::AlreadyInFolder:
      return localizedMessage(QStringLiteral("MergeFate-AlreadyInFolder"));
    case UnkeptFate::Deleted:
      return localizedMessage(QStringLiteral("MergeFate-Deleted"));
    case UnkeptFate::Collected:
      return localizedMessage(QStringLiteral("MergeFate-Collected"));
    case UnkeptFate::Shared:
      return localizedMessage(QStringLiteral("MergeFate-Shared"));
    case UnkeptFate::Gone:
      return localizedMessage(QStringLiteral("MergeFate-Gone"));
    case UnkeptFate::NoPath:
      return localizedMessage(QStringLiteral("MergeFate-NoPath"));
  }
  return {};
}
