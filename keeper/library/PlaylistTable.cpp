#include "keeper/library/PlaylistTable.h"

#include <QRandomGenerator>
#include <algorithm>

#include "keeper/library/EntryTable.h"
#include "keeper/library/LibraryStore.h"
#include "keeper/library/StoreBatch.h"
#include "keeper/library/StoreColumns.h"
#include "keeper/library/StoreDatabase.h"
#include "keeper/library/StoreStatement.h"
#include "platform/keeper/RecordCodec.h"
#include "platform/keeper/StoreSchema.h"
#include "values/Keys.h"
#include "values/PersistentID.h"

namespace {

bool isFixedKey(Key key) {
  return key == keys::PlaylistID || key == keys::PlaylistPersistentID || key == keys::PlaylistItems ||
         key == keys::ParentPersistentID;
}

QVariant parentValue(const PlaylistColumns &columns) {
  return columns.parent ? storedID(*columns.parent) : QVariant();
}

}  // namespace

PlaylistTable::PlaylistTable(StoreDatabase &database_, EntryTable &entries_)
    : database(database_), entries(entries_) {
  database.onForget([this] { forget(); });
}

void PlaylistTable::forget() {
  infos.clear();
  isLoaded = false;
}

void PlaylistTable::load() {
  infos.clear();
  std::unordered_map<quint64, PlaylistRow> rows;
  std::vector<std::optional<quint64>> parents;
  StoreStatement statement(database,
                           QStringLiteral("SELECT id, persistent_id, parent, name, flags, distinguished_kind "
                                          "FROM playlists ORDER BY position"));
  statement.run();
  while (statement.next()) {
    PlaylistInfo info;
    info.row = PlaylistRow(statement.integer(0));
    info.persistentID = quint64(statement.integer(1));
    info.name = statement.text(3);
    info.flags = int(statement.integer(4));
    info.distinguishedKind = statement.integer(5);
    rows.emplace(info.persistentID, info.row);
    parents.push_back(statement.isNull(2) ? std::nullopt : std::optional(quint64(statement.integer(2))));
    infos.push_back(std::move(info));
  }
  for (size_t index = 0; index < infos.size(); ++index) {
    const auto folder = parents[index] ? rows.find(*parents[index]) : rows.end();
    if (folder != rows.end() && folder->second != infos[index].row) infos[index].parent = folder->second;
  }
  isLoaded = true;
}

const std::vector<PlaylistInfo> &PlaylistTable::all() {
  if (!isLoaded) load();
  return infos;
}

const PlaylistInfo *PlaylistTable::info(PlaylistRow row) {
  for (const PlaylistInfo &one : all()) {
    if (one.row == row) return &one;
  }
  return nullptr;
}

PlaylistRow PlaylistTable::master() {
  const PlaylistRows found = withFlags(storeSchema::kMaster, storeSchema::kMaster);
  return found.empty() ? PlaylistRow::None : found.front();
}

PlaylistRow PlaylistTable::withPersistentID(quint64 id) {
  for (const PlaylistInfo &one : all()) {
    if (one.persistentID == id) return one.row;
  }
  return PlaylistRow::None;
}

PlaylistRows PlaylistTable::named(const QString &name) {
  PlaylistRows found;
  for (const PlaylistInfo &one : all()) {
    if (one.name.compare(name, Qt::CaseInsensitive) == 0) found.push_back(one.row);
  }
  return found;
}

PlaylistRows PlaylistTable::withFlags(int mask, int flags) {
  PlaylistRows found;
  for (const PlaylistInfo &one : all()) {
    if ((one.flags & mask) == flags) found.push_back(one.row);
  }
  return found;
}

PlaylistRows PlaylistTable::children(PlaylistRow folder) {
  PlaylistRows found;
  for (const PlaylistInfo &one : all()) {
    if (one.parent == folder) found.push_back(one.row);
  }
  return found;
}

Dictionary PlaylistTable::record(PlaylistRow row) {
  StoreStatement statement(database, QStringLiteral("SELECT record FROM playlists WHERE id = ?"));
  if (!statement.bind(qint64(row)).run().next()) return {};
  return decodeRecord(statement.bytes(0), database.keys);
}

Value PlaylistTable::value(PlaylistRow row, Key key) {
  StoreStatement statement(database, QStringLiteral("SELECT record FROM playlists WHERE id = ?"));
  if (!statement.bind(qint64(row)).run().next()) return {};
  return valueInRecord(statement.bytes(0), key, database.keys);
}

PlaylistRow PlaylistTable::insert(const Dictionary &record, quint64 persistentID, qint64 position) {
  const PlaylistColumns columns = PlaylistColumns::of(record);
  StoreStatement statement(
      database, QStringLiteral("INSERT INTO playlists (persistent_id, position, parent, name, flags, "
                               "distinguished_kind, record) VALUES (?, ?, ?, ?, ?, ?, ?)"));
  statement.bind(storedID(persistentID)).bind(position).bind(parentValue(columns)).bind(columns.name);
  statement.bind(columns.flags).bind(columns.distinguishedKind);
  statement.bind(encodeRecord(record, database.keys)).run();
  return PlaylistRow(statement.insertedRow());
}

PlaylistRow PlaylistTable::make(const Dictionary &given, PlaylistRow folder) {
  StoreBatch batch(database);
  quint64 id = 0;
  while (id == 0 || withPersistentID(id) != PlaylistRow::None) id = QRandomGenerator::system()->generate64();
  const PlaylistInfo *parent = info(folder);
  const Dictionary made = Dictionary::make();
  made.set(keys::Name, given.value(keys::Name).toText());
  made.set(keys::PlaylistID, database.takeNumber());
  made.set(keys::PlaylistPersistentID, hexPersistentID(id));
  if (parent) made.set(keys::ParentPersistentID, hexPersistentID(parent->persistentID));
  if (!given.contains(keys::AllItems)) made.set(keys::AllItems, true);
  for (const DictionaryEntry &entry : given) {
    if (!isFixedKey(entry.key)) made.set(entry.key, entry.value);
  }
  const qint64 last = database.answer(QStringLiteral("SELECT max(position) FROM playlists")).toLongLong();
  const PlaylistRow row = insert(made, id, last + 1);
  forget();
  database.markChanged();
  batch.commit();
  return row;
}

void PlaylistTable::write(PlaylistRow row, const Dictionary &record) {
  const PlaylistColumns columns = PlaylistColumns::of(record);
  StoreStatement(database, QStringLiteral("UPDATE playlists SET parent = ?, name = ?, flags = ?, "
                                          "distinguished_kind = ?, record = ? WHERE id = ?"))
      .bind(parentValue(columns))
      .bind(columns.name)
      .bind(columns.flags)
      .bind(columns.distinguishedKind)
      .bind(encodeRecord(record, database.keys))
      .bind(qint64(row))
      .run();
  forget();
  database.markChanged();
}

bool PlaylistTable::set(PlaylistRow row, const KeyChanges &changes) {
  StoreBatch batch(database);
  const Dictionary before = record(row);
  if (!before.isNull()) write(row, withChanges(before, changes, keys::PlaylistItems, isFixedKey));
  batch.commit();
  return !before.isNull();
}

bool PlaylistTable::moveTo(PlaylistRow row, PlaylistRow folder) {
  StoreBatch batch(database);
  const PlaylistInfo *target = info(folder);
  bool isPossible =
      exists(row) && (folder == PlaylistRow::None || (target && target->flags & storeSchema::kFolder));
  size_t steps = 0;
  for (const PlaylistInfo *above = target; above && isPossible && steps <= infos.size(); ++steps) {
    isPossible = above->row != row;
    above = info(above->parent);
  }
  if (isPossible) {
    const Value parent = target ? Value(hexPersistentID(target->persistentID)) : Value();
    // The folder stands right behind the playlist's own ID, as the music application writes it.
    Dictionary changed = record(row);
    changed.remove(keys::ParentPersistentID);
    Key behind;
    for (auto entry = changed.begin(); entry != changed.end(); ++entry) {
      const bool isID = entry->key == keys::PlaylistPersistentID;
      if (isID && entry + 1 != changed.end()) behind = (entry + 1)->key;
    }
    write(row, withChanges(changed, {{keys::ParentPersistentID, parent}}, behind, [](Key) { return false; }));
  }
  batch.commit();
  return isPossible;
}

void PlaylistTable::remove(std::span<const PlaylistRow> rows) {
  StoreBatch batch(database);
  PlaylistRows gone(rows.begin(), rows.end());
  std::erase(gone, PlaylistRow::None);
  const PlaylistRow kept = master();
  for (size_t index = 0; index < gone.size(); ++index) {
    for (const PlaylistRow child : children(gone[index])) {
      if (std::find(gone.begin(), gone.end(), child) == gone.end()) gone.push_back(child);
    }
  }
  for (const PlaylistRow row : gone) {
    if (row == kept) continue;
    StoreStatement(database, QStringLiteral("DELETE FROM playlists WHERE id = ?")).bind(qint64(row)).run();
    entries.drop(row);
  }
  forget();
  database.markChanged();
  batch.commit();
}
