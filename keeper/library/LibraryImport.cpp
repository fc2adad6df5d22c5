#include "keeper/library/LibraryImport.h"

#include <QFileInfo>
#include <QRandomGenerator>
#include <algorithm>

#include "keeper/library/EntryTable.h"
#include "keeper/library/EntryWriter.h"
#include "keeper/library/LibrarySource.h"
#include "keeper/library/NewLibrary.h"
#include "keeper/library/PlaylistTable.h"
#include "keeper/library/StoreBatch.h"
#include "keeper/library/StoreColumns.h"
#include "keeper/library/StoreDatabase.h"
#include "keeper/library/StoreStatement.h"
#include "keeper/library/StoreUpgrade.h"
#include "keeper/library/TrackTable.h"
#include "platform/FileAddress.h"
#include "platform/HeapRoom.h"
#include "platform/Platform.h"
#include "platform/keeper/RecordCodec.h"
#include "platform/keeper/StoreSchema.h"
#include "support/BMLog.h"
#include "values/Keys.h"
#include "values/PersistentID.h"

namespace {

const QString kNoteImported = QStringLiteral("imported file");
const Key kNotePath{u"path"};
const Key kNoteDate{u"date"};
constexpr qsizetype kProgressStride = 2000;

/// Room for the pages of a large transaction: those that do not fit are written to the log again and again.
class LargeCache {
 public:
  explicit LargeCache(StoreDatabase &of) : database(of) { setSize(262144); }
  ~LargeCache() {
    try {
      setSize(StoreDatabase::kCacheKilobytes);
      database.execute(QStringLiteral("PRAGMA shrink_memory"));
    } catch (const StoreError &) {  // logged; the store is only larger in memory
    }
  }
  LargeCache(const LargeCache &) = delete;
  LargeCache &operator=(const LargeCache &) = delete;

 private:
  void setSize(int kilobytes) { database.execute(QStringLiteral("PRAGMA cache_size = -%1").arg(kilobytes)); }
  StoreDatabase &database;
};

}  // namespace

LibraryImport::LibraryImport(LibraryStore &into) : store(into) {}

QString LibraryImport::run(const QString &xmlPath, const ImportOptions &given) {
  counts = {};
  progress = {};
  options = &given;
  try {
    step();
    {
      const LibrarySource source = readLibrarySource(xmlPath);
      if (!source.error.isEmpty()) return source.error;
      counts.damage = source.damage;
      keepOldLibrary();
      const LargeCache cache(store.database());
      fill(source, xmlPath);
    }
    giveBackHeapRoom();
  } catch (const StoreError &error) {
    return error.message;
  } catch (const Stop &) {
    return QStringLiteral("the import of %1 was cancelled").arg(xmlPath);
  }
  BMLog(
      "[import] %@: %ld tracks, %ld playlists, %ld entries; %ld without and %ld with doubled persistent IDs, "
      "%ld renumbered, %ld items dropped, %ld unreadable, %ld mapped",
      xmlPath, counts.tracks, counts.playlists, counts.entries, counts.withoutID, counts.withDoubledID,
      counts.renumbered, counts.droppedItems, counts.unreadable, counts.mapped);
  return {};
}

/// Whoever imports a second time may not have meant it.
void LibraryImport::keepOldLibrary() {
  if (store.tracks().count() == 0) return;
  const QFileInfo file(store.path());
  const QString copy =
      freePath(QStringLiteral("%1/%2 (before import)").arg(file.path(), file.completeBaseName()),
               u'.' + file.suffix());
  StoreStatement(store.database(), QStringLiteral("VACUUM INTO ?")).bind(copy).run();
}

void LibraryImport::fill(const LibrarySource &source, const QString &path) {
  StoreBatch batch(store);
  const Value tracks = source.root.value(keys::Tracks);
  const Value playlists = source.root.value(keys::Playlists);
  progress.total = tracks.toDictionary().size();
  clear();
  takeUsedNumbers(tracks.toDictionary(), playlists.toArray());
  insertTracks(tracks.toDictionary());
  insertPlaylists(playlists.toArray());
  const Dictionary root = source.root.copyMembers(true);
  root.set(keys::Tracks, Dictionary::make());
  root.set(keys::Playlists, Array::make());
  map(root, keys::MusicFolder);
  StoreDatabase &database = store.database();
  database.setFact(storeSchema::kFactRoot, encodeRecord(root, database.keys));
  database.raiseNumber(lastNumber);
  const Dictionary note = Dictionary::make();
  note.set(kNotePath, path);
  if (const auto date = platform().fileFacts->modificationDate(path)) note.set(kNoteDate, *date);
  store.setNote(kNoteImported, note);
  database.markChanged();
  step();
  batch.commit();
}

void LibraryImport::clear() {
  StoreDatabase &database = store.database();
  for (const char *table : {"entries", "playlists", "tracks"}) {
    StoreStatement(database, QStringLiteral("DELETE FROM ") + QString::fromLatin1(table)).run();
  }
  store.tracks().forget();
  store.playlists().forget();
  store.entries().forget();
  trackIDs.clear();
  playlistIDs.clear();
  rowsByNumber.clear();
  position = 0;
}

void LibraryImport::step() {
  if (options->onProgress && !options->onProgress(progress)) throw Stop{};
}

/// Fresh numbers must not be those of tracks that come later in the file.
void LibraryImport::takeUsedNumbers(const Dictionary &tracks, const Array &playlists) {
  lastNumber = 0;
  for (const DictionaryEntry &entry : tracks) {
    lastNumber = qMax(lastNumber, entry.value.toDictionary().value(keys::TrackID).toInteger());
    lastNumber = qMax(lastNumber, entry.key.text().toLongLong());
  }
  for (const Value &playlist : playlists) {
    lastNumber = qMax(lastNumber, playlist.toDictionary().value(keys::PlaylistID).toInteger());
  }
}

void LibraryImport::insertTracks(const Dictionary &tracks) {
  for (const DictionaryEntry &entry : tracks) {
    if (entry.value.type() != Value::Type::Dictionary) {
      ++counts.unreadable;
      continue;
    }
    insertTrack(entry.key.text(), entry.value.toDictionary());
    ++counts.tracks;
    if (++progress.done % kProgressStride == 0) step();
  }
}

void LibraryImport::insertTrack(const QString &member, const Dictionary &track) {
  const qint64 number = numberOf(track, member);
  const quint64 id = idOf(track, keys::PersistentID, true);
  map(track, keys::Location);
  const QString plainMember = QString::number(number);
  const TrackRow row = store.tracks().insert(track, id, number, member == plainMember ? QString() : member);
  rowsByNumber.emplace(number, row);
}

qint64 LibraryImport::numberOf(const Dictionary &track, const QString &member) {
  const qint64 named = track.value(keys::TrackID).toInteger();
  if (named > 0 && !rowsByNumber.contains(named)) return named;
  const qint64 fromMember = member.toLongLong();
  const bool isFree = fromMember > 0 && !rowsByNumber.contains(fromMember);
  const qint64 number = isFree ? fromMember : ++lastNumber;
  track.set(keys::TrackID, number);
  ++counts.renumbered;
  return number;
}

quint64 LibraryImport::idOf(const Dictionary &thing, Key key, bool isTrack) {
  std::unordered_set<quint64> &used = isTrack ? trackIDs : playlistIDs;
  const std::optional<quint64> named = persistentIDOfText(thing.value(key).toText());
  if (named && *named != 0 && used.insert(*named).second) return *named;
  ++(named && *named != 0 ? counts.withDoubledID : counts.withoutID);
  quint64 id = 0;
  while (id == 0 || !used.insert(id).second) id = QRandomGenerator::system()->generate64();
  thing.set(key, hexPersistentID(id));
  return id;
}

void LibraryImport::map(const Dictionary &record, Key key) {
  if (options->mappings.empty()) return;
  const QString address = record.value(key).toText();
  if (!address.startsWith(QStringLiteral("file:"))) return;
  const QString path = pathOfFileAddress(address);
  for (const LocationMapping &mapping : options->mappings) {
    const std::optional<QString> mapped = mapping.apply(path);
    if (!mapped) continue;
    const QString end = address.endsWith(u'/') ? QStringLiteral("/") : QString();
    record.set(key, fileAddressOfPath(*mapped) + end);
    counts.mapped += key == keys::Location;
    return;
  }
}

void LibraryImport::insertPlaylists(const Array &playlists) {
  const auto isMaster = [](const Value &playlist) {
    return playlist.toDictionary().value(keys::Master).toBool();
  };
  if (std::none_of(playlists.begin(), playlists.end(), isMaster)) insertMaster();
  for (const Value &playlist : playlists) {
    if (playlist.type() == Value::Type::Dictionary)
      insertPlaylist(playlist.toDictionary());
    else
      ++counts.unreadable;
    step();
  }
}

void LibraryImport::insertMaster() {
  const Array items = Array::make();
  for (const TrackRow row : store.tracks().rows()) {
    const Dictionary item = Dictionary::make();
    item.set(keys::TrackID, store.tracks().databaseID(row));
    items.append(item);
  }
  const Dictionary master = newMasterPlaylist();
  master.set(keys::PlaylistItems, items);
  insertPlaylist(master);
  BMLog("[import] the file has no playlist of all tracks; it got one");
}

void LibraryImport::insertPlaylist(const Dictionary &playlist) {
  const quint64 id = idOf(playlist, keys::PlaylistPersistentID, false);
  if (playlist.value(keys::PlaylistID).toInteger() <= 0) playlist.set(keys::PlaylistID, ++lastNumber);
  const Dictionary record = playlist.copyMembers(true);
  const Value items = playlist.value(keys::PlaylistItems);
  if (items.type() == Value::Type::Array) record.set(keys::PlaylistItems, Array::make());
  insertEntries(store.playlists().insert(record, id, ++position), items.toArray());
  ++counts.playlists;
}

void LibraryImport::insertEntries(PlaylistRow playlist, const Array &items) {
  StoreDatabase &database = store.database();
  EntryWriter writer(database, playlist);
  for (const Value &item : items) {
    const Dictionary &keys_ = item.toDictionary();
    const Value &number = keys_.value(keys::TrackID);
    const auto row = rowsByNumber.find(number.toInteger());
    if (row == rowsByNumber.end()) {
      ++counts.droppedItems;
      continue;
    }
    const bool isPlain = keys_.size() == 1 && number.type() == Value::Type::Integer;
    writer.add(row->second, isPlain ? QByteArray() : encodeRecord(keys_, database.keys));
    ++counts.entries;
  }
  writer.flush();
}

QString LibraryImport::importedFile(LibraryStore &store, Date *date) {
  const Value note = store.note(kNoteImported);
  const Date *stored = note.toDictionary().value(kNoteDate).toDate();
  if (date && stored) *date = *stored;
  return note.toDictionary().value(kNotePath).toText();
}
