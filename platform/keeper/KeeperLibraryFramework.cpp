#include "platform/keeper/KeeperLibraryFramework.h"

#include <QFileInfo>

#include "platform/FileAddress.h"
#include "platform/Platform.h"
#include "platform/keeper/KeeperFolder.h"
#include "platform/keeper/StoreSchema.h"
#include "values/Keys.h"

namespace {

const QString kCountTracks = QStringLiteral("SELECT count(*) FROM tracks");
const QString kReadRecord = QStringLiteral("SELECT record FROM tracks WHERE persistent_id = ?");
const QString kReadHolders = QStringLiteral(
    "SELECT DISTINCT playlists.persistent_id FROM entries JOIN playlists ON playlists.id = entries.playlist "
    "WHERE entries.track = (SELECT id FROM tracks WHERE persistent_id = ?)");

LibraryPlaylist::Kind kindOf(int flags) {
  using Kind = LibraryPlaylist::Kind;
  if (flags & storeSchema::kFolder) return Kind::Folder;
  if (flags & storeSchema::kGeniusMix) return Kind::GeniusMix;
  if (flags & storeSchema::kGenius) return Kind::Genius;
  return flags & storeSchema::kSmart ? Kind::Smart : Kind::Regular;
}

LibraryPlaylist playlistOf(const QSqlQuery &row) {
  enum Column { Row, PersistentID, Parent, Name, Flags, DistinguishedKind, Record, Count };
  LibraryPlaylist playlist;
  const int flags = row.value(Flags).toInt();
  playlist.persistentID = quint64(row.value(PersistentID).toLongLong());
  playlist.name = row.value(Name).toString();
  if (!row.isNull(Parent) && row.value(Parent).toLongLong())
    playlist.parentID = quint64(row.value(Parent).toLongLong());
  playlist.distinguishedKind = row.value(DistinguishedKind).toLongLong();
  playlist.kind = kindOf(flags);
  playlist.isVisible = !(flags & storeSchema::kHidden);
  playlist.isAllItemsPlaylist = flags & storeSchema::kAllItems;
  playlist.isMaster = flags & storeSchema::kMaster;
  playlist.itemCount = row.value(Count).toLongLong();
  return playlist;
}

/// As `StoreReader::visit`.
bool visitTracks(StoreReader &reader, const QString &sql, const QVariantList &values,
                 const std::function<bool(const LibraryMediaItem &)> &visit) {
  RecordItems items;
  bool isReady = false;
  return reader.visit(sql, values, [&](const QSqlQuery &row) {
    enum Column { PersistentID, Flags, Record };
    if (!isReady) items.setKeys(reader.keys());
    isReady = true;
    const QByteArray record = row.value(Record).toByteArray();
    return visit(items.item(quint64(row.value(PersistentID).toLongLong()), row.value(Flags).toInt(), record));
  });
}

}  // namespace

KeeperLibraryFramework::~KeeperLibraryFramework() {
  // The main thread's connection would else outlive the database services.
  if (seats.hasLocalData()) seats.setLocalData(nullptr);
}

QString KeeperLibraryFramework::folder() const {
  return fixedFolder.isEmpty() ? keeperFolder::ofUser() : fixedFolder;
}

KeeperLibraryFramework::Seat *KeeperLibraryFramework::seat() {
  const quint64 wanted = generation;
  Seat *own = seats.hasLocalData() ? seats.localData() : nullptr;
  if (own && (own->generation == wanted || own->reader.isHeld())) return own;
  const QString path = folder() + u'/' + storeSchema::kFileName;
  own = QFileInfo(path).size() > 0 ? new Seat(path) : nullptr;
  seats.setLocalData(own);
  if (own) own->generation = wanted;
  return own;
}

StoreReader *KeeperLibraryFramework::reader() {
  Seat *const own = seat();
  return own && own->reader.isOpen() ? &own->reader : nullptr;
}

QString KeeperLibraryFramework::problem() {
  Seat *const own = seat();
  if (!own || (own->reader.isOpen() && own->reader.error().isEmpty())) return {};
  return folder() + QStringLiteral(": ") + own->reader.error();
}

void KeeperLibraryFramework::beginSnapshot() {
  if (StoreReader *const store = reader()) store->hold();
}

void KeeperLibraryFramework::endSnapshot() {
  if (StoreReader *const store = reader()) store->release();
}

bool KeeperLibraryFramework::visit(const QString &sql, const QVariantList &values,
                                   const std::function<bool(const QSqlQuery &)> &row) {
  Seat *const own = seat();
  return !own || (own->reader.isOpen() && own->reader.visit(sql, values, row));
}

QString KeeperLibraryFramework::open() {
  return {};
}

void KeeperLibraryFramework::reloadData() {
  ++generation;
}

std::optional<Date> KeeperLibraryFramework::savedUntil() {
  return platform().clock->now();
}

qsizetype KeeperLibraryFramework::mediaItemCount() {
  StoreReader *const store = reader();
  return store ? qsizetype(store->answer(kCountTracks).toLongLong()) : 0;
}

bool KeeperLibraryFramework::visitMediaItems(const std::function<bool(const LibraryMediaItem &)> &visit) {
  Seat *const own = seat();
  return !own || (own->reader.isOpen() && visitTracks(own->reader, storeSchema::kReadTracks, {}, visit));
}

std::optional<LibraryMediaItem> KeeperLibraryFramework::mediaItem(quint64 persistentID) {
  std::optional<LibraryMediaItem> found;
  StoreReader *const store = reader();
  if (!store) return found;
  const auto keep = [&found](const LibraryMediaItem &item) {
    found = item;
    return false;
  };
  const bool wasRead = visitTracks(*store, storeSchema::kReadTrack, {qint64(persistentID)}, keep);
  return wasRead ? found : std::nullopt;
}

std::optional<std::vector<LibraryPlaylist>> KeeperLibraryFramework::allPlaylists() {
  std::vector<LibraryPlaylist> playlists;
  const bool wasRead = visit(storeSchema::kReadPlaylists, {}, [&playlists](const QSqlQuery &row) {
    playlists.push_back(playlistOf(row));
    return true;
  });
  return wasRead ? std::optional(std::move(playlists)) : std::nullopt;
}

std::optional<std::set<quint64>> KeeperLibraryFramework::playlistsContaining(quint64 trackID) {
  std::set<quint64> holders;
  const bool wasRead = visit(kReadHolders, {qint64(trackID)}, [&holders](const QSqlQuery &row) {
    holders.insert(quint64(row.value(0).toLongLong()));
    return true;
  });
  return wasRead ? std::optional(std::move(holders)) : std::nullopt;
}

bool KeeperLibraryFramework::visitItems(quint64 playlistID, bool withLocations,
                                        const std::function<bool(const LibraryPlaylistItem &)> &show) {
  const QString &sql = withLocations ? storeSchema::kReadEntriesWithLocations : storeSchema::kReadEntries;
  return visit(sql, {qint64(playlistID)}, [&](const QSqlQuery &row) {
    LibraryPlaylistItem item{quint64(row.value(0).toLongLong()), QString()};
    const QString path = withLocations ? row.value(1).toString() : QString();
    if (!path.isEmpty()) item.location = fileAddressOfPath(path);
    return show(item);
  });
}

std::optional<QString> KeeperLibraryFramework::mediaFolderLocation() {
  StoreReader *const store = reader();
  if (!store) return std::nullopt;
  QString address;
  const bool wasRead =
      store->visit(storeSchema::kReadFact, {storeSchema::kFactRoot}, [&](const QSqlQuery &row) {
        const QByteArray record = row.value(0).toByteArray();
        for (const Key key : {keys::MusicFolder, keys::MediaFolder}) {
          if (address.isEmpty()) address = valueInRecord(record, key, store->keys()).toText();
        }
        return false;
      });
  if (!wasRead) return std::nullopt;
  return address.isEmpty() ? fileAddressOfPath(folder() + QStringLiteral("/iTunes Media")) : address;
}

std::optional<QString> KeeperLibraryFramework::musicFolderLocation() {
  return reader() ? std::optional(fileAddressOfPath(folder())) : std::nullopt;
}

std::optional<bool> KeeperLibraryFramework::hasArtworkAvailable(quint64 persistentID) {
  StoreReader *const store = reader();
  if (!store) return std::nullopt;
  bool has = false;
  const bool wasRead = store->visit(kReadRecord, {qint64(persistentID)}, [&](const QSqlQuery &row) {
    has = valueInRecord(row.value(0).toByteArray(), keys::ArtworkCount, store->keys()).toInteger() > 0;
    return false;
  });
  return wasRead ? std::optional(has) : std::nullopt;
}

QByteArray KeeperLibraryFramework::artwork(quint64 persistentID) {
  const std::optional<LibraryMediaItem> item = pictureOf ? mediaItem(persistentID) : std::nullopt;
  return item && !item->location.isEmpty() ? pictureOf(pathOfFileAddress(item->location)) : QByteArray();
}
