#include "keeper/library/EntryTable.h"

#include <algorithm>

#include "keeper/library/LibraryStore.h"
#include "keeper/library/StoreBatch.h"
#include "keeper/library/StoreColumns.h"
#include "keeper/library/StoreDatabase.h"
#include "keeper/library/StoreStatement.h"

namespace {

/// 16 bytes each: the most that is held besides the playlist asked for last.
constexpr size_t kMostHeldEntries = 700000;

}  // namespace

EntryTable::EntryTable(StoreDatabase &database_) : database(database_) {
  database.onForget([this] { forget(); });
}

void EntryTable::forget() {
  held.clear();
  counts.clear();
}

void EntryTable::drop(PlaylistRow playlist) {
  std::erase_if(held, [&](const Held &one) { return one.playlist == playlist; });
  counts.erase(playlist);
}

void EntryTable::dropTracks(std::span<const TrackRow> gone) {
  const auto isGone = [&](const PlaylistEntry &entry) {
    return std::binary_search(gone.begin(), gone.end(), entry.track);
  };
  for (Held &one : held) std::erase_if(one.entries, isGone);
  counts.clear();
}

EntryTable::Held *EntryTable::find(PlaylistRow playlist) {
  const auto found =
      std::find_if(held.begin(), held.end(), [&](const Held &one) { return one.playlist == playlist; });
  if (found == held.end()) return nullptr;
  held.splice(held.begin(), held, found);
  return &held.front();
}

EntryTable::Held &EntryTable::hold(PlaylistRow playlist) {
  if (Held *there = find(playlist)) return *there;
  Held made{playlist, {}};
  StoreStatement statement(
      database, QStringLiteral("SELECT position, track FROM entries WHERE playlist = ? ORDER BY position"));
  statement.bind(qint64(playlist)).run();
  while (statement.next()) made.entries.push_back({statement.integer(0), TrackRow(statement.integer(1))});
  held.push_front(std::move(made));
  limit();
  return held.front();
}

void EntryTable::limit() {
  size_t total = 0;
  for (auto one = std::next(held.begin()); one != held.end(); ++one) {
    total += one->entries.size();
    if (total > kMostHeldEntries) {
      held.erase(one, held.end());
      return;
    }
  }
}

qsizetype EntryTable::count(PlaylistRow playlist) {
  if (const Held *there = find(playlist)) return qsizetype(there->entries.size());
  const auto known = counts.find(playlist);
  if (known != counts.end()) return known->second;
  StoreStatement statement(database, QStringLiteral("SELECT count(*) FROM entries WHERE playlist = ?"));
  const qsizetype counted = statement.bind(qint64(playlist)).run().next() ? statement.integer(0) : 0;
  counts.emplace(playlist, counted);
  return counted;
}

PlaylistEntry EntryTable::at(PlaylistRow playlist, qsizetype index) {
  const std::vector<PlaylistEntry> &entries = all(playlist);
  return index >= 0 && index < qsizetype(entries.size()) ? entries[size_t(index)] : PlaylistEntry();
}

const std::vector<PlaylistEntry> &EntryTable::all(PlaylistRow playlist) {
  return hold(playlist).entries;
}

TrackRows EntryTable::tracks(PlaylistRow playlist) {
  TrackRows found;
  for (const PlaylistEntry &entry : all(playlist)) found.push_back(entry.track);
  return found;
}

std::optional<qsizetype> EntryTable::indexOf(PlaylistRow playlist, qint64 position) {
  const std::vector<PlaylistEntry> &entries = all(playlist);
  const auto found =
      std::lower_bound(entries.begin(), entries.end(), position,
                       [](const PlaylistEntry &entry, qint64 p) { return entry.position < p; });
  if (found == entries.end() || found->position != position) return {};
  return found - entries.begin();
}

bool EntryTable::contains(PlaylistRow playlist, TrackRow track) {
  StoreStatement statement(database,
                           QStringLiteral("SELECT 1 FROM entries WHERE track = ? AND playlist = ? LIMIT 1"));
  return statement.bind(qint64(track)).bind(qint64(playlist)).run().next();
}

std::vector<PlaylistEntry> EntryTable::ofTrack(PlaylistRow playlist, TrackRow track) {
  StoreStatement statement(
      database,
      QStringLiteral("SELECT position FROM entries WHERE track = ? AND playlist = ? ORDER BY position"));
  statement.bind(qint64(track)).bind(qint64(playlist)).run();
  std::vector<PlaylistEntry> found;
  while (statement.next()) found.push_back({statement.integer(0), track});
  return found;
}

qint64 EntryTable::lastPosition(PlaylistRow playlist) {
  if (const Held *there = find(playlist)) {
    return there->entries.empty() ? 0 : there->entries.back().position;
  }
  StoreStatement statement(database, QStringLiteral("SELECT max(position) FROM entries WHERE playlist = ?"));
  return statement.bind(qint64(playlist)).run().next() ? statement.integer(0) : 0;
}

std::vector<PlaylistEntry> EntryTable::append(PlaylistRow playlist, std::span<const TrackRow> tracks) {
  StoreBatch batch(database);
  qint64 position = lastPosition(playlist);
  std::vector<PlaylistEntry> made;
  for (const TrackRow track : tracks) {
    made.push_back({++position, track});
    StoreStatement(database,
                   QStringLiteral("INSERT INTO entries (playlist, position, track) VALUES (?, ?, ?)"))
        .bind(qint64(playlist))
        .bind(position)
        .bind(qint64(track))
        .run();
  }
  if (Held *there = find(playlist)) {
    there->entries.insert(there->entries.end(), made.begin(), made.end());
  }
  if (const auto known = counts.find(playlist); known != counts.end())
    known->second += qsizetype(made.size());
  if (!made.empty()) database.markChanged();
  batch.commit();
  return made;
}

void EntryTable::remove(PlaylistRow playlist, std::span<const qint64> positions) {
  StoreBatch batch(database);
  for (const qint64 position : positions) {
    StoreStatement(database, QStringLiteral("DELETE FROM entries WHERE playlist = ? AND position = ?"))
        .bind(qint64(playlist))
        .bind(position)
        .run();
  }
  if (Held *there = find(playlist)) {
    std::vector<qint64> sorted(positions.begin(), positions.end());
    std::sort(sorted.begin(), sorted.end());
    std::erase_if(there->entries, [&](const PlaylistEntry &entry) {
      return std::binary_search(sorted.begin(), sorted.end(), entry.position);
    });
  }
  counts.erase(playlist);
  database.markChanged();
  batch.commit();
}

void EntryTable::replaceAll(PlaylistRow playlist, std::span<const TrackRow> tracks) {
  StoreBatch batch(database);
  // Behind the old ones: a position of before never names another track.
  const qint64 first = lastPosition(playlist);
  std::vector<PlaylistEntry> made;
  for (const TrackRow track : tracks) made.push_back({first + 1 + qint64(made.size()), track});
  StoreStatement(database, QStringLiteral("DELETE FROM entries WHERE playlist = ?"))
      .bind(qint64(playlist))
      .run();
  drop(playlist);
  for (const PlaylistEntry &entry : made) {
    StoreStatement(database,
                   QStringLiteral("INSERT INTO entries (playlist, position, track) VALUES (?, ?, ?)"))
        .bind(qint64(playlist))
        .bind(entry.position)
        .bind(qint64(entry.track))
        .run();
  }
  held.push_front({playlist, std::move(made)});
  database.markChanged();
  batch.commit();
}
