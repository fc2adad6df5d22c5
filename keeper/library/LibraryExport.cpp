#include "keeper/library/LibraryExport.h"

#include "keeper/library/ExportFile.h"
#include "keeper/library/LibraryXmlWriter.h"
#include "keeper/library/StoreDatabase.h"
#include "keeper/library/StoreSnapshot.h"
#include "keeper/library/StoreStatement.h"
#include "platform/keeper/RecordCodec.h"
#include "platform/keeper/StoreSchema.h"
#include "support/BMLog.h"
#include "values/Keys.h"

namespace {

const QString kNoteFiles = QStringLiteral("exported files");
const QString kNoteStamp = QStringLiteral("exported stamp");
const QString kKeptWords = QStringLiteral("before Music Keeper");
/// How many of our own files are known: that of the last export, and that of one that was killed before its
/// file took its place.
constexpr qsizetype kKnownFiles = 4;

}  // namespace

QString LibraryExport::usualPath() const {
  return store.folder() + u'/' + storeSchema::kExportName;
}

QString LibraryExport::run(const QString &path) {
  try {
    write(path);
    return {};
  } catch (const StoreError &error) {
    BMLog("[export] %@", error.message);
    return error.message;
  }
}

void LibraryExport::write(const QString &path) {
  store.refresh();
  ExportFile file(path);
  const qint64 stamp = store.changeStamp();
  LibraryXmlWriter xml(store.database().keys, [&](QByteArrayView bytes) { file.write(bytes); });
  {
    StoreSnapshot snapshot(store.database());
    xml.begin();
    writeRoot(xml);
    xml.finish();
  }
  file.close();
  const bool isForeign = !fileStamp(path).isEmpty() && !isOurs(path);
  remember(file.temporaryPath());
  if (isForeign) BMLog("[export] kept a file of another's as %@", keepUnderAnotherName(path, kKeptWords));
  file.takePlace();
  if (path == usualPath()) store.setNote(kNoteStamp, stamp);
}

bool LibraryExport::isOurs(const QString &path) {
  const Value known = store.note(kNoteFiles);
  const QString stamp = fileStamp(path);
  for (const Value &one : known.toArray()) {
    if (one.toText() == stamp) return true;
  }
  return false;
}

void LibraryExport::remember(const QString &temporary) {
  const Value known = store.note(kNoteFiles);
  const Array files = known.isNull() ? Array::make() : known.toArray();
  while (files.size() >= kKnownFiles) files.removeAt(0);
  files.append(fileStamp(temporary));
  store.setNote(kNoteFiles, files);
}

bool LibraryExport::isCurrent() {
  const Value stamp = store.note(kNoteStamp);
  return !stamp.isNull() && stamp.toInteger() == store.changeStamp() && isOurs(usualPath());
}

void LibraryExport::writeRoot(LibraryXmlWriter &xml) {
  const RecordKeys &keys_ = store.database().keys;
  const qint64 tracks = keys_.find(keys::Tracks);
  const qint64 playlists = keys_.find(keys::Playlists);
  xml.openDictionary();
  bool hasTracks = false, hasPlaylists = false;
  const QByteArray root = store.database().fact(storeSchema::kFactRoot);
  xml.entries(RecordCursor(root), [&](quint32 number) {
    if (number == tracks)
      writeTracks(xml), hasTracks = true;
    else if (number == playlists)
      writePlaylists(xml), hasPlaylists = true;
    else
      return false;
    return true;
  });
  if (!hasTracks) writeTracks(xml);
  if (!hasPlaylists) writePlaylists(xml);
  xml.closeDictionary();
}

void LibraryExport::writeTracks(LibraryXmlWriter &xml) {
  xml.keyOfContainer(keys::Tracks.text());
  xml.openDictionary();
  StoreStatement tracks(store.database(),
                        QStringLiteral("SELECT database_id, member, record FROM tracks ORDER BY id"));
  tracks.run();
  while (tracks.next()) {
    xml.keyOfContainer(tracks.isNull(1) ? QString::number(tracks.integer(0)) : tracks.text(1));
    xml.openDictionary();
    const QByteArray record = tracks.bytes(2);
    xml.entries(RecordCursor(record));
    xml.closeDictionary();
  }
  xml.closeDictionary();
}

void LibraryExport::writePlaylists(LibraryXmlWriter &xml) {
  const qint64 items = store.database().keys.find(keys::PlaylistItems);
  xml.keyOfContainer(keys::Playlists.text());
  xml.openArray();
  StoreStatement playlists(store.database(),
                           QStringLiteral("SELECT id, record, EXISTS (SELECT 1 FROM entries WHERE playlist = "
                                          "playlists.id) FROM playlists ORDER BY position"));
  playlists.run();
  while (playlists.next()) {
    xml.openDictionary();
    const QByteArray record = playlists.bytes(1);
    const qint64 playlist = playlists.integer(0);
    bool isWritten = false;
    xml.entries(RecordCursor(record), [&](quint32 number) {
      if (number != items) return false;
      writeItems(xml, playlist);
      return isWritten = true;
    });
    if (!isWritten && playlists.integer(2) != 0) writeItems(xml, playlist);
    xml.closeDictionary();
  }
  xml.closeArray();
}

void LibraryExport::writeItems(LibraryXmlWriter &xml, qint64 playlist) {
  xml.keyOfContainer(keys::PlaylistItems.text());
  xml.openArray();
  StoreStatement entries(
      store.database(),
      QStringLiteral("SELECT tracks.database_id, entries.record FROM entries JOIN tracks ON tracks.id = "
                     "entries.track WHERE entries.playlist = ? ORDER BY entries.position"));
  entries.bind(playlist).run();
  while (entries.next()) {
    xml.openDictionary();
    if (entries.isNull(1)) {
      xml.key(keys::TrackID.text());
      xml.integer(entries.integer(0));
    } else {
      const QByteArray record = entries.bytes(1);
      xml.entries(RecordCursor(record));
    }
    xml.closeDictionary();
  }
  xml.closeArray();
}
