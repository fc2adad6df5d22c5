#include "ui/MergeSummary.h"

#include <QLocale>

#include "bridge/LocalizedMessage.h"

namespace {

/// The text "MergeSummary-<name>", or where it is about one thing, "MergeSummary-<name>One".
QString counted(const QString &name, qint64 count) {
  const QString key = QStringLiteral("MergeSummary-") + name;
  return count == 1 ? localizedMessage(key + QStringLiteral("One")) : localizedMessage(key, count);
}

QString totalsLine(const char *when, const MergeTotals &totals) {
  return localizedMessage(QStringLiteral("MergeSummary-") + QLatin1String(when), totals.tracks, totals.plays,
                          totals.skips, totals.playlistEntries, totals.files,
                          MergeSummary::size(totals.bytes));
}

QString filesLine(const QString &name, const MergeSummary::Files &files) {
  return localizedMessage(QStringLiteral("MergeSummary-") + name,
                          counted(QStringLiteral("Files"), files.count), MergeSummary::size(files.bytes));
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
      if (file.fate == UnkeptFate::Moved || file.fate == UnkeptFate::AlreadyInFolder) note(&moved, file);
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
    parts << localizedMessage(QStringLiteral("MergeSummary-InTrash"), size(trashed.bytes));
  if (moved.count > 0) parts << localizedMessage(QStringLiteral("MergeSummary-InFolder"), size(moved.bytes));
  if (deleted.count > 0) parts << localizedMessage(QStringLiteral("MergeSummary-Freed"), size(deleted.bytes));
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
  if (!playlists.isEmpty())
    told << localizedMessage(QStringLiteral("MergeSummary-Playlists"), playlists.join(QStringLiteral(", ")));
  if (unfinishedGroups > 0) told << counted(QStringLiteral("Unfinished"), unfinishedGroups);
  if (before && after) told << totalsLine("Before", *before) << totalsLine("After", *after);
  return told;
}

QString MergeSummary::size(qint64 bytes) {
  return QLocale().formattedDataSize(bytes, bytes < 1000 ? 0 : 1, QLocale::DataSizeSIFormat);
}

QString MergeSummary::words(UnkeptFate fate) {
  switch (fate) {
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
