#include "keeper/library/LibraryStore.h"

#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

#include "keeper/library/EntryTable.h"
#include "keeper/library/NewLibrary.h"
#include "keeper/library/PlaylistTable.h"
#include "keeper/library/StoreBatch.h"
#include "keeper/library/StoreColumns.h"
#include "keeper/library/StoreDatabase.h"
#include "keeper/library/StoreStatement.h"
#include "keeper/library/StoreUpgrade.h"
#include "keeper/library/TrackTable.h"
#include "platform/Platform.h"
#include "platform/keeper/RecordCodec.h"
#include "platform/keeper/StoreSchema.h"
#include "support/Paths.h"
#include "values/Keys.h"

namespace {

const QString kNotePrefix = QStringLiteral("note: ");

/// Before anything is written to it: a file that is there must be a store of ours.
void checkIsOurs(StoreDatabase &database) {
  const int application = database.answer(QStringLiteral("PRAGMA application_id")).toInt();
  const int version = database.answer(QStringLiteral("PRAGMA user_version")).toInt();
  if (application != storeSchema::kApplicationID) {
    throw StoreError{
        QStringLiteral("cannot open the library %1: it belongs to another program").arg(database.path())};
  }
  if (version > storeSchema::kVersion) {
    throw StoreError{QStringLiteral("cannot open the library %1: a newer Music Keeper made it (version %2)")
                         .arg(database.path())
                         .arg(version)};
  }
}

bool isEmptyDatabase(StoreDatabase &database) {
  return database.answer(QStringLiteral("SELECT count(*) FROM sqlite_master")).toInt() == 0 &&
         database.answer(QStringLiteral("PRAGMA application_id")).toInt() == 0;
}

void createTables(StoreDatabase &database) {
  database.execute(QStringLiteral("PRAGMA application_id = %1").arg(storeSchema::kApplicationID));
  for (const QString &statement : storeSchema::kCreate) database.execute(statement);
  database.execute(QStringLiteral("PRAGMA user_version = %1").arg(storeSchema::kVersion));
}

}  // namespace

LibraryStore::LibraryStore()
    : base(std::make_unique<StoreDatabase>()),
      entryTable(std::make_unique<EntryTable>(*base)),
      playlistTable(std::make_unique<PlaylistTable>(*base, *entryTable)),
      trackTable(std::make_unique<TrackTable>(*base, *playlistTable, *entryTable)) {}

LibraryStore::~LibraryStore() {
  close();
}

QString LibraryStore::open(const QString &folder, Access access) {
  close();
  const bool isReadOnly = access == Access::ReadOnly;
  const QString file = folder + u'/' + storeSchema::kFileName;
  const bool isNew = !QFileInfo::exists(file) || QFileInfo(file).size() == 0;
  if (isNew && isReadOnly) return QStringLiteral("there is no library %1").arg(file);
  if (isNew && !createMissingDirectories(folder)) {
    return QStringLiteral("cannot make the folder %1 of the library").arg(folder);
  }
  try {
    base->connect(file, isReadOnly);
    prepare(folder);
    return {};
  } catch (const StoreError &error) {
    base->close();
    // What SQLite made before it failed is nobody's library.
    if (isNew && QFileInfo(file).size() == 0) QFile::remove(file);
    return error.message;
  }
}

void LibraryStore::prepare(const QString &folder) {
  const bool isEmpty = !base->isReadOnly() && isEmptyDatabase(*base);
  if (!isEmpty) checkIsOurs(*base);
  base->execute(QStringLiteral("PRAGMA cache_size = -%1").arg(StoreDatabase::kCacheKilobytes));
  if (base->isReadOnly()) {
    base->refresh();
    return;
  }
  base->execute(QStringLiteral("PRAGMA journal_mode = WAL"));
  base->execute(QStringLiteral("PRAGMA synchronous = FULL"));
  base->execute(QStringLiteral("PRAGMA foreign_keys = ON"));
  base->execute(QStringLiteral("PRAGMA journal_size_limit = 67108864"));
  // A change of a name touches some nine pages: with SQLite's own 1000 every hundredth change would wait
  // until the log is brought to the file.
  base->execute(QStringLiteral("PRAGMA wal_autocheckpoint = 4000"));
  if (isEmpty) {
    createLibrary(folder);
    return;
  }
  upgradeStore(*base, storeSchema::kVersion, storeUpgradeSteps());
  base->refresh();
}

void LibraryStore::createLibrary(const QString &folder) {
  StoreBatch batch(*base, StoreBatch::Kind::FirstOfAll);
  // Two programs may have found the file empty at once; the second finds it made.
  if (isEmptyDatabase(*base)) {
    createTables(*base);
    base->refresh();
    const Dictionary made = newLibraryRoot(folder + QStringLiteral("/iTunes Media"),
                                           QRandomGenerator::system()->generate64(), platform().clock->now());
    base->setFact(storeSchema::kFactRoot, encodeRecord(made, base->keys));
    playlistTable->make(newMasterPlaylist());
    base->markChanged();
  }
  batch.commit();
}

void LibraryStore::close() {
  base->close();
}

void LibraryStore::deferDisk() {
  // The log is still brought to the disk before anything of it goes to the file.
  base->execute(QStringLiteral("PRAGMA synchronous = NORMAL"));
}

quint64 LibraryStore::commitCount() const {
  return base->commitCount();
}

bool LibraryStore::isOpen() const {
  return base->isOpen();
}

bool LibraryStore::existsIn(const QString &folder) {
  const QFileInfo file(folder + u'/' + storeSchema::kFileName);
  return file.isFile() && file.size() > 0;
}

QString LibraryStore::path() const {
  return base->path();
}

QString LibraryStore::folder() const {
  return QFileInfo(base->path()).path();
}

TrackTable &LibraryStore::tracks() {
  return *trackTable;
}

PlaylistTable &LibraryStore::playlists() {
  return *playlistTable;
}

EntryTable &LibraryStore::entries() {
  return *entryTable;
}

Dictionary LibraryStore::root() {
  return decodeRecord(base->fact(storeSchema::kFactRoot), base->keys);
}

void LibraryStore::setRoot(const KeyChanges &changes) {
  StoreBatch batch(*base);
  const auto isFixed = [](Key key) { return key == keys::Tracks || key == keys::Playlists; };
  base->setFact(storeSchema::kFactRoot,
                encodeRecord(withChanges(root(), changes, keys::Tracks, isFixed), base->keys));
  base->markChanged();
  batch.commit();
}

qint64 LibraryStore::changeStamp() {
  return base->changeStamp();
}

bool LibraryStore::refresh() {
  return base->refresh();
}

Value LibraryStore::note(const QString &name) {
  return decodeValue(base->fact(kNotePrefix + name), base->keys);
}

void LibraryStore::setNote(const QString &name, const Value &value) {
  StoreBatch batch(*base);
  base->setFact(kNotePrefix + name, encodeValue(value, base->keys));
  batch.commit();
}

QString LibraryStore::integrityReport() {
  try {
    StoreStatement check(*base, QStringLiteral("PRAGMA integrity_check(20)"));
    check.run();
    QStringList lines;
    while (check.next()) lines.append(check.text(0));
    StoreStatement references(*base, QStringLiteral("PRAGMA foreign_key_check"));
    references.run();
    if (references.next()) lines.append(QStringLiteral("entries of tracks or playlists that are not there"));
    return lines == QStringList{QStringLiteral("ok")} ? QString() : lines.join(QStringLiteral("; "));
  } catch (const StoreError &error) {
    return error.message;
  }
}
