#include "repairs/LibraryTotals.h"

#include <QSet>

#include "bridge/LibraryMapping.h"
#include "bridge/LocalizedMessage.h"
#include "bridge/iTunesInterface.h"
#include "platform/FileAddress.h"
#include "repairs/FileIdentity.h"
#include "repairs/UserPlaylists.h"
#include "support/BMLog.h"

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

/// The files that were counted, each by its device and number: two paths may lead to one.
using CountedFiles = QSet<std::pair<quint64, quint64>>;

void add(const LibraryMediaItem &item, CountedFiles &files, MergeTotals &totals) {
  ++totals.tracks;
  totals.plays += item.playCount;
  totals.skips += item.skipCount;
  if (item.locationType != LibraryMediaItem::LocationType::File) return;
  const auto file = fileIdentity::statusOfFile(pathOfFileAddress(item.location));
  if (!file) return;
  const qsizetype before = files.size();
  files.insert({file->device, file->number});
  if (files.size() == before) return;
  ++totals.files;
  totals.bytes += file->size;
}

}  // namespace

std::optional<MergeTotals> count(const GoesOn &goesOn) {
  LibraryFramework *const library = iTunesLibInterface::libraryObject();
  if (!library) return std::nullopt;
  MergeTotals totals;
  CountedFiles files;
  bool isEnded = false;
  const bool isWhole = library->visitMediaItems([&](const LibraryMediaItem &item) {
    isEnded = !goesOn();
    if (!isEnded) add(item, files, totals);
    return !isEnded;
  });
  if (isEnded || !isWhole) return std::nullopt;
  const auto playlists = library->allPlaylists();
  if (!playlists) return std::nullopt;
  for (const LibraryPlaylist &playlist : *playlists) {
    if (UserPlaylists::isOrdinary(iTunesLibInterface::dictionaryOfPlaylist(playlist)))
      totals.playlistEntries += playlist.itemCount;
  }
  return totals;
}

std::vector<Difference> differences(const MergeReport::Contents &report, const MergeSettings &settings) {
  std::vector<Difference> found;
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

void prove(MergeReport &report, const MergeSettings &settings, const GoesOn &goesOn) {
  MergeReport::Contents contents = report.contents();
  contents.after = count(goesOn);
  std::vector<MergeFailure> failures;
  for (const Difference &wrong : differences(contents, settings)) {
    const QString name = localizedMessage(wrong.nameKey);
    BMLog("%@ behind the merge: %@ expected %ld, counted %ld",
          QString::fromLatin1(wrong.isLoss() ? "!!!" : "[+]"), name, wrong.expected, wrong.found);
    if (wrong.isLoss()) {
      failures.push_back(
          {name, {}, localizedMessage(QStringLiteral("MergeTotalWrong"), wrong.expected, wrong.found)});
    }
  }
  report.setAfter(contents.after, std::move(failures));
}

}  // namespace libraryTotals
