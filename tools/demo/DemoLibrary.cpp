#include "tools/demo/DemoLibrary.h"

#include <QDir>
#include <QFileInfo>

#include "tools/demo/DemoPlaylists.h"
#include "tools/demo/M4aWriter.h"
#include "tools/demo/Mp3Writer.h"
#include "values/Keys.h"

namespace {

bool writeFile(const QString &path, const QByteArray &bytes, QString *error) {
  QFile file(path);
  if (QDir().mkpath(QFileInfo(path).path()) && file.open(QIODevice::WriteOnly) &&
      file.write(bytes) == bytes.size() && file.flush()) {
    return true;
  }
  *error = QStringLiteral("%1: %2").arg(path, file.errorString());
  return false;
}

// One empty page.
QByteArray booklet() {
  return "%PDF-1.1\n1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj\n"
         "2 0 obj<</Type/Pages/Kids[3 0 R]/Count 1>>endobj\n"
         "3 0 obj<</Type/Page/Parent 2 0 R/MediaBox[0 0 300 300]>>endobj\n"
         "xref\n0 4\n0000000000 65535 f \n0000000009 00000 n \n0000000052 00000 n \n0000000101 00000 n \n"
         "trailer<</Size 4/Root 1 0 R>>\nstartxref\n164\n%%EOF\n";
}

// Makes the entry's file and takes over what only the file tells. False with a text if it cannot be written.
bool makeSongFile(DemoTrack &track, const QString &musicFolder, DemoSummary *summary) {
  if (track.path.isEmpty()) return true;
  SongFileBytes song;
  if (track.path.endsWith(u".pdf")) {
    song.bytes = booklet();
  } else if (track.isM4a()) {
    song = makeM4a(track.tags, track.bitRate, track.milliseconds);
  } else {
    song = makeMp3(track.tags, track.bitRate, track.milliseconds);
  }
  track.sizeBytes = song.bytes.size();
  track.milliseconds = song.milliseconds;
  if (track.fileIsGone) return true;
  ++summary->songFiles;
  return writeFile(musicFolder + u'/' + track.path, song.bytes, &summary->error);
}

bool writeLibrary(const DemoPlan &plan, const QString &home, quint64 seed, DemoSummary *summary) {
  QFile file(libraryFileOf(home));
  if (!file.open(QIODevice::WriteOnly)) {
    summary->error = QStringLiteral("%1: %2").arg(file.fileName(), file.errorString());
    return false;
  }
  LibraryXml xml(file);
  writeLibraryHead(xml, mediaFolderOf(home), 0x7a11ef0000000000u + seed);
  xml.beginDictionary(keys::Tracks);
  for (const DemoTrack &track : plan.tracks)
    writeTrack(xml, track, mediaFolderOf(home) + QStringLiteral("/Music"));
  xml.end();
  summary->playlists = writeDemoPlaylists(xml, plan);
  if (xml.finish()) return true;
  summary->error = QStringLiteral("%1: %2").arg(file.fileName(), file.errorString());
  return false;
}

}  // namespace

QString libraryFolderOf(const QString &home) {
  return QDir::cleanPath(QDir(home).absolutePath()) + QStringLiteral("/Music/iTunes");
}
QString libraryFileOf(const QString &home) {
  return libraryFolderOf(home) + QStringLiteral("/iTunes Music Library.xml");
}
QString mediaFolderOf(const QString &home) {
  return libraryFolderOf(home) + QStringLiteral("/iTunes Media");
}

DemoSummary makeDemoLibrary(const QString &home, quint64 seed) {
  DemoPlan plan = planDemoLibrary(seed);
  DemoSummary summary;
  summary.libraryFile = libraryFileOf(home);
  summary.tracks = int(plan.tracks.size());
  summary.droppedTracks = plan.droppedTracks;
  summary.duplicateGroups = plan.duplicateGroups;
  summary.duplicateRows = plan.duplicateRows;
  summary.inconsistentArtists = plan.inconsistentArtists;
  summary.inconsistentAlbums = plan.inconsistentAlbums;
  summary.missingTracks = plan.missingTracks;
  summary.orphans = int(plan.orphans.size());
  const QString musicFolder = mediaFolderOf(home) + QStringLiteral("/Music");
  for (std::vector<DemoTrack> *tracks : {&plan.tracks, &plan.orphans}) {
    for (DemoTrack &track : *tracks) {
      if (!makeSongFile(track, musicFolder, &summary)) return summary;
    }
  }
  writeLibrary(plan, home, seed, &summary);
  return summary;
}
