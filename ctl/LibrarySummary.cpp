#include "ctl/LibrarySummary.h"

#include <QFileInfo>
#include <numeric>

#include "app/PrefsController.h"
#include "app/library/LibraryLocation.h"
#include "ctl/JsonWriter.h"
#include "support/Preferences.h"
#include "values/Keys.h"

namespace {

/// The media folder by the order of trust in which the controller takes it, with the name of its source.
void findMediaFolder(const OpenedLibrary &library, LibrarySummary *summary) {
  const Key named =
      library.root.value(keys::MusicFolder).toText().isEmpty() ? keys::MediaFolder : keys::MusicFolder;
  const std::pair<QString, QString> sources[] = {
      {prefs::manualMediaPath, prefs::text(prefs::manualMediaPath)},
      {QStringLiteral("direct access"), iTunesInterface::musicLibraryMediaPath()},
      {named.text(), iTunesInterface::mediaFolderPathFromDictionaryLibraryPath(library.root, library.path)},
      {QStringLiteral("tracks"), iTunesInterface::musicLibraryMostCommonParentMediaPath()}};
  for (const auto &[source, folder] : sources) {
    if (folder.isEmpty()) continue;
    summary->mediaFolder = folder;
    summary->mediaFolderSource = source;
    return;
  }
}

}  // namespace

LibrarySummary LibrarySummary::of(const OpenedLibrary &library) {
  LibrarySummary summary;
  summary.path = library.path;
  summary.date = library.date;
  TrackFilter filter(PrefsController::resources());
  for (const DictionaryEntry &track : library.root.value(keys::Tracks).toDictionary())
    ++summary.verdicts[size_t(filter.verdictOn(track.value.toDictionary()))];
  summary.playlists = library.root.value(keys::Playlists).toArray().size();
  findMediaFolder(library, &summary);
  return summary;
}

qsizetype LibrarySummary::dropped() const {
  return std::accumulate(verdicts.begin(), verdicts.end(), qsizetype(0)) - kept();
}

QString LibrarySummary::reason(TrackFilter::Verdict verdict) {
  switch (verdict) {
    case TrackFilter::Verdict::NoKind:
      return QStringLiteral("no kind");
    case TrackFilter::Verdict::Video:
      return QStringLiteral("video");
    case TrackFilter::Verdict::NoDuration:
      return QStringLiteral("no duration");
    case TrackFilter::Verdict::IgnoredKind:
      return QStringLiteral("ignored kind");
    case TrackFilter::Verdict::IgnoredKindPart:
      return QStringLiteral("ignored part of kind");
    case TrackFilter::Verdict::Ringtone:
      return QStringLiteral("ringtone");
    default:
      return QStringLiteral("kept");
  }
}

void LibrarySummary::printJson(Terminal &terminal) const {
  JsonWriter json(terminal.out);
  json.beginObject();
  json.member(u"path", path);
  json.member(u"date", date ? Value(*date) : Value());
  json.member(u"tracks", qint64(kept() + dropped()));
  json.member(u"kept", qint64(kept()));
  json.member(u"dropped", qint64(dropped()));
  json.key(u"droppedBecause");
  json.beginObject();
  for (int verdict = 1; verdict < TrackFilter::kVerdictCount; ++verdict)
    json.member(reason(TrackFilter::Verdict(verdict)), qint64(verdicts[size_t(verdict)]));
  json.endObject();
  json.member(u"playlists", qint64(playlists));
  json.key(u"mediaFolder");
  json.textOrNull(mediaFolder);
  json.key(u"mediaFolderSource");
  json.textOrNull(mediaFolderSource);
  json.endObject();
  json.endLine();
}

void LibrarySummary::print(Terminal &terminal) const {
  terminal.print(QStringLiteral("Library:       ") + printable(path));
  terminal.print(QStringLiteral("Date:          ") + (date ? date->toIsoText() : QStringLiteral("unknown")));
  terminal.print(QStringLiteral("Tracks kept:   %1").arg(kept()));
  terminal.print(QStringLiteral("Dropped:       %1").arg(dropped()));
  for (int verdict = 1; verdict < TrackFilter::kVerdictCount; ++verdict) {
    const qsizetype count = verdicts[size_t(verdict)];
    if (count > 0)
      terminal.print(QStringLiteral("  %1: %2").arg(reason(TrackFilter::Verdict(verdict))).arg(count));
  }
  terminal.print(QStringLiteral("Playlists:     %1").arg(playlists));
  if (mediaFolder.isEmpty()) return terminal.print(QStringLiteral("Media folder:  not known"));
  const QString gone = QString::fromLatin1(QFileInfo(mediaFolder).isDir() ? "" : "; not there");
  terminal.print(QStringLiteral("Media folder:  %1 (named by: %2%3)")
                     .arg(printable(mediaFolder), mediaFolderSource, gone));
}
