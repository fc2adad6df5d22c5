#include "repairs/LibraryTotals.h"

#include <QSet>

#include "bridge/LocalizedMessage.h"
#include "bridge/iTunesInterface.h"
#include "platform/FileAddress.h"
#include "repairs/FileIdentity.h"
#include "repairs/UserPlaylists.h"
#include "support/BMLog.h"
#include "values/Keys.h"

namespace libraryTotals {

namespace {

/// What the merged groups take from the totals.
MergeTotals takenBy(const std::vector<MergedGroup> &groups) {
  MergeTotals taken;
  for (const MergedGroup &group : groups) {
    taken.bytes -= group.keptGrowth;
    for (const MergedGroup::Unkept &unkept : group.unkept) {
      if (unkept.removed) ++taken.tracks;
      if (!unkept.leftLibrary) continue;
      ++taken.files;
      taken.bytes += unkept.bytes;
    }
  }
  return taken;
}

}  // namespace

std::optional<MergeTotals> count() {
  LibraryFramework *const library = iTunesLibInterface::libraryObject();
  if (!library) return std::nullopt;
  MergeTotals totals;
  QSet<QString> paths;
  const bool isWhole = library->visitMediaItems([&](const LibraryMediaItem &item) {
    ++totals.tracks;
    totals.plays += item.playCount;
    totals.skips += item.skipCount;
    const QString path = item.locationType == LibraryMediaItem::LocationType::File
                             ? pathOfFileAddress(item.location)
                             : QString();
    if (!path.isEmpty() && !paths.contains(path) && fileIdentity::isFile(path)) {
      paths.insert(path);
      ++totals.files;
      totals.bytes += fileIdentity::sizeOfFile(path);
    }
    return true;
  });
  const Array playlists = iTunesInterface::getDirectPlaylists();
  if (!isWhole || playlists.isNull()) return std::nullopt;
  for (const Value &value : playlists) {
    const Dictionary &playlist = value.toDictionary();
    if (UserPlaylists::isOrdinary(playlist))
      totals.playlistEntries += playlist.value(keys::PlaylistItems).toArray().size();
  }
  return totals;
}

std::vector<Violation> violations(const MergeReport::Contents &report, const MergeSettings &settings) {
  std::vector<Violation> found;
  if (!report.before || !report.after) return found;
  const MergeTotals &before = *report.before, &after = *report.after, taken = takenBy(report.groups);
  const auto expect = [&](const char *name, qint64 expected, qint64 counted) {
    if (expected != counted) found.push_back({QString::fromLatin1(name), expected, counted});
  };
  expect("MergeTotalTracks", before.tracks - taken.tracks, after.tracks);
  if (!settings.noMergePlayedInfo) {
    expect("MergeTotalPlays", before.plays, after.plays);
    expect("MergeTotalSkips", before.skips, after.skips);
  }
  // The kept track stands once where several copies stood in a list that was too long to be built anew.
  bool hasAppended = false;
  for (const MergedGroup &group : report.groups) hasAppended |= group.wasAppended;
  if (!settings.noIntelligentPlaylistHandling && !hasAppended)
    expect("MergeTotalEntries", before.playlistEntries, after.playlistEntries);
  expect("MergeTotalFiles", before.files - taken.files, after.files);
  expect("MergeTotalBytes", before.bytes - taken.bytes, after.bytes);
  return found;
}

void prove(MergeReport &report, const MergeSettings &settings) {
  MergeReport::Contents contents = report.contents();
  contents.after = count();
  std::vector<MergeFailure> failures;
  for (const Violation &wrong : violations(contents, settings)) {
    const QString name = localizedMessage(wrong.nameKey);
    BMLog("!!! behind the merge: %@ expected %ld, counted %ld", name, wrong.expected, wrong.found);
    failures.push_back(
        {name, {}, localizedMessage(QStringLiteral("MergeTotalWrong"), wrong.expected, wrong.found)});
  }
  report.setAfter(contents.after, std::move(failures));
}

}  // namespace libraryTotals
