#include "keeper/library/TrackTable.h"
#include "keeper/library/StoreBatch.h"
#include "keeper/library/StoreStatement.h"

#include <QRandomGenerator>
#include <algorithm>

#include "keeper/library/EntryTable.h"
#include "keeper/library/LibraryStore.h"
#include "keeper/library/PlaylistTable.h"
#include "keeper/library/StoreColumns.h"
#include "keeper/library/StoreDatabase.h"
#include "platform/keeper/RecordCodec.h"
#include "values/Keys.h"
#include "values/PersistentID.h"

namespace {

bool isFixedKey(Key key) {
  return key == keys::TrackID || key == keys::PersistentID;
}

/// The keys of a new track where the music application has them: its number first, its persistent ID before
/// the keys that tell where it is.
Dictionary newRecord(const Dictionary &given, qint64 number, quint64 id) {
  const Dictionary made = Dictionary::make();
  made.set(keys::TrackID, number);
  const Value idText = hexPersistentID(id);
  for (const DictionaryEntry &entry : given) {
    if (entry.key == keys::PersistentID || entry.key == keys::TrackType || entry.key == keys::Location) {
      if (!made.contains(keys::PersistentID)) made.set(keys::PersistentID, idText);
    }
    if (!isFixedKey(entry.key)) made.set(entry.key, entry.value);
  }
  if (!made.contains(keys::PersistentID)) made.set(keys::PersistentID, idText);
  return made;
}

}  // namespace

TrackTable::TrackTable(StoreDatabase &database_, PlaylistTable &playlists_, EntryTable &entries_)
    : database(database_), playlists(playlists_), entries(entries_) {
  database.onForget([this] { forget(); });
}

void TrackTable::forget() {
  order.clear();
  isLoaded = false;
}

const TrackRows &TrackTable::rows() {
  if (!isLoaded) {
    order = query(QStringLiteral("1"), {});
    isLoaded = true;
  }
  return order;
}

qsizetype TrackTable::count() {
  return qsizetype(rows().size());
}

TrackRow TrackTable::at(qsizetype index) {
  return index >= 0 && index < count() ? rows()[size_t(index)] : TrackRow::None;
}

std::optional<qsizetype> TrackTable::indexOf(TrackRow row) {
  const TrackRows &all = rows();
  const auto found = std::lower_bound(all.begin(), all.end(), row);
  if (found == all.end() || *found != row) return {};
  return found - all.begin();
}

bool TrackTable::exists(TrackRow row) {
  return indexOf(row).has_value();
}

TrackRows TrackTable::query(const QString &condition, const QVariantList &values) {
  StoreStatement statement(database, QStringLiteral("SELECT id FROM tracks WHERE ") + condition);
  for (const QVariant &value : values) statement.bind(value);
  statement.run();
  TrackRows found;
  while (statement.next()) found.push_back(TrackRow(statement.integer(0)));
  // Sorted here: the database would rather walk the whole records than sort.
  std::sort(found.begin(), found.end());
  return found;
}

TrackRow TrackTable::withPersistentID(quint64 id) {
  const TrackRows found = query(QStringLiteral("persistent_id = ?"), {storedID(id)});
  return found.empty() ? TrackRow::None : found.front();
}

TrackRow TrackTable::withDatabaseID(qint64 id) {
  const TrackRows found = query(QStringLiteral("database_id = ?"), {id});
  return found.empty() ? TrackRow::None : found.front();
}

TrackRows TrackTable::named(const QString &name) {
  if (name.isEmpty()) return query(QStringLiteral("name IS NULL"), {});
  return query(QStringLiteral("name = ?"), {foldedText(name)});
}

TrackRows TrackTable::named(const QString &name, const QString &artist) {
  return query(QStringLiteral("name IS ? AND artist IS ?"),
               {textOrNull(foldedText(name)), textOrNull(foldedText(artist))});
}

TrackRows TrackTable::byArtist(const QString &artist) {
  if (artist.isEmpty()) return query(QStringLiteral("artist IS NULL"), {});
  return query(QStringLiteral("artist = ?"), {foldedText(artist)});
}

TrackRows TrackTable::atPath(const QString &path) {
  return query(QStringLiteral("location = ?"), {path});
}

TrackRows TrackTable::withFlags(int mask, int flags) {
  return query(QStringLiteral("flags & ? = ?"), {mask, flags});
}

quint64 TrackTable::persistentID(TrackRow row) {
  StoreStatement statement(database, QStringLiteral("SELECT persistent_id FROM tracks WHERE id = ?"));
  return statement.bind(qint64(row)).run().next() ? quint64(statement.integer(0)) : 0;
}

qint64 TrackTable::databaseID(TrackRow row) {
  StoreStatement statement(database, QStringLiteral("SELECT database_id FROM tracks WHERE id = ?"));
  return statement.bind(qint64(row)).run().next() ? statement.integer(0) : 0;
}

int TrackTable::flags(TrackRow row) {
  StoreStatement statement(database, QStringLiteral("SELECT flags FROM tracks WHERE id = ?"));
  return statement.bind(qint64(row)).run().next() ? int(statement.integer(0)) : 0;
}

Dictionary TrackTable::record(TrackRow row) {
  StoreStatement statement(database, QStringLiteral("SELECT record FROM tracks WHERE id = ?"));
  if (!statement.bind(qint64(row)).run().next()) return {};
  return decodeRecord(statement.bytes(0), database.keys);
}

Value TrackTable::value(TrackRow row, Key key) {
  StoreStatement statement(database, QStringLiteral("SELECT record FROM tracks WHERE id = ?"));
  if (!statement.bind(qint64(row)).run().next()) return {};
  return valueInRecord(statement.bytes(0), key, database.keys);
}

void TrackTable::visitColumn(Key key, const std::function<void(TrackRow, const Value &)> &visit) {
  StoreStatement statement(database, QStringLiteral("SELECT id, record FROM tracks ORDER BY id"));
  statement.run();
  while (statement.next()) {
    visit(TrackRow(statement.integer(0)), valueInRecord(statement.bytes(1), key, database.keys));
  }
}

void TrackTable::visitColumnOf(PlaylistRow playlist, Key key,
                               const std::function<void(const Value &)> &visit) {
  StoreStatement statement(database, QStringLiteral("SELECT tracks.record FROM entries JOIN tracks "
                                                    "ON tracks.id = entries.track WHERE entries.playlist = ? "
                                                    "ORDER BY entries.position"));
  statement.bind(qint64(playlist)).run();
  while (statement.next()) visit(valueInRecord(statement.bytes(0), key, database.keys));
}

bool TrackTable::set(TrackRow row, const KeyChanges &changes) {
  StoreBatch batch(database);
  const Dictionary before = record(row);
  if (before.isNull()) return batch.commit(), false;
  update(row, before, withChanges(before, changes, keys::PersistentID, isFixedKey));
  batch.commit();
  return true;
}

void TrackTable::update(TrackRow row, const Dictionary &before, const Dictionary &after) {
  const TrackColumns columns = TrackColumns::of(after);
  const QByteArray bytes = encodeRecord(after, database.keys);
  database.markChanged();
  if (columns == TrackColumns::of(before)) {
    // Columns that are named are written to their indexes even if they stay as they are.
    StoreStatement(database, QStringLiteral("UPDATE tracks SET record = ? WHERE id = ?"))
        .bind(bytes)
        .bind(qint64(row))
        .run();
    return;
  }
  StoreStatement(database, QStringLiteral("UPDATE tracks SET record = ?, name = ?, artist = ?, location = ?, "
                                          "flags = ? WHERE id = ?"))
      .bind(bytes)
      .bind(textOrNull(columns.name))
      .bind(textOrNull(columns.artist))
      .bind(textOrNull(columns.location))
      .bind(columns.flags)
      .bind(qint64(row))
      .run();
}

TrackRow TrackTable::insert(const Dictionary &record, quint64 persistentID, qint64 databaseID,
                            const QString &member) {
  const TrackColumns columns = TrackColumns::of(record);
  StoreStatement statement(
      database, QStringLiteral("INSERT INTO tracks (persistent_id, database_id, member, name, artist, "
                               "location, flags, record) VALUES (?, ?, ?, ?, ?, ?, ?, ?)"));
  statement.bind(storedID(persistentID)).bind(databaseID).bind(textOrNull(member));
  statement.bind(textOrNull(columns.name)).bind(textOrNull(columns.artist));
  statement.bind(textOrNull(columns.location)).bind(columns.flags);
  statement.bind(encodeRecord(record, database.keys)).run();
  return TrackRow(statement.insertedRow());
}

TrackRow TrackTable::add(const Dictionary &given) {
  StoreBatch batch(database);
  const quint64 id = freshPersistentID();
  const qint64 number = database.takeNumber();
  const TrackRow row = insert(newRecord(given, number, id), id, number, {});
  if (isLoaded) order.push_back(row);
  entries.append(playlists.master(), std::span(&row, 1));
  database.markChanged();
  batch.commit();
  return row;
}

void TrackTable::remove(std::span<const TrackRow> gone) {
  StoreBatch batch(database);
  for (const TrackRow row : gone) {
    StoreStatement(database, QStringLiteral("DELETE FROM tracks WHERE id = ?")).bind(qint64(row)).run();
  }
  TrackRows sorted(gone.begin(), gone.end());
  std::sort(sorted.begin(), sorted.end());
  std::erase_if(order, [&](TrackRow row) { return std::binary_search(sorted.begin(), sorted.end(), row); });
  entries.dropTracks(sorted);
  database.markChanged();
  batch.commit();
}

quint64 TrackTable::freshPersistentID() {
  while (true) {
    const quint64 id = QRandomGenerator::system()->generate64();
    if (id != 0 && withPersistentID(id) == TrackRow::None &&
        playlists.withPersistentID(id) == PlaylistRow::None) {
      return id;
    }
  }
}
