#include "keeper/library/PlaylistTracks.h"

#include <unordered_set>

#include "keeper/library/Refusal.h"
#include "keeper/library/TrackFields.h"
#include "keeper/library/TrackObject.h"
#include "platform/keeper/StoreSchema.h"
#include "values/PersistentID.h"

namespace {

std::optional<TrackRows> oneOrNone(TrackRow track) {
  return track == TrackRow::None ? TrackRows() : TrackRows{track};
}

}  // namespace

PlaylistTracks::PlaylistTracks(KeeperContext &context_, PlaylistRow playlist_, const QString &className)
    : context(context_), playlist(playlist_), isLibrary(playlist_ == context_.store.playlists().master()) {
  if (className == u"track") return;
  if (className == u"file track") {
    mask = storeSchema::kIsAddress | storeSchema::kIsRemote;
  } else if (className == u"url track") {
    mask = storeSchema::kIsAddress | storeSchema::kIsRemote;
    flags = storeSchema::kIsAddress;
  } else if (className == u"shared track") {
    mask = flags = storeSchema::kIsRemote;
  } else {
    flags = 1;  // without a mask: no track is that
  }
}

bool PlaylistTracks::isOfClass(TrackRow track) {
  if (mask == 0) return flags == 0;
  return (context.store.tracks().flags(track) & mask) == flags;
}

ScriptObjectPtr PlaylistTracks::object(TrackRow track, qint64 position) const {
  return std::make_shared<TrackObject>(context, track, playlist, position);
}

std::vector<PlaylistEntry> PlaylistTracks::entries() {
  if (mask == 0 && flags != 0) return {};
  std::vector<PlaylistEntry> found;
  if (isLibrary) {
    TrackTable &tracks = context.store.tracks();
    for (const TrackRow track : mask == 0 ? tracks.rows() : tracks.withFlags(mask, flags)) {
      found.push_back({0, track});
    }
    return found;
  }
  found = context.store.entries().all(playlist);
  if (mask != 0) std::erase_if(found, [this](const PlaylistEntry &entry) { return !isOfClass(entry.track); });
  return found;
}

qsizetype PlaylistTracks::count() {
  if (mask != 0 || flags != 0) return qsizetype(entries().size());
  return isLibrary ? context.store.tracks().count() : context.store.entries().count(playlist);
}

ScriptObjects PlaylistTracks::all() {
  ScriptObjects objects;
  for (const auto &[position, track] : entries()) objects.push_back(object(track, position));
  return objects;
}

ScriptObjectPtr PlaylistTracks::at(qsizetype index) {
  if (index < 0) return {};
  if (mask != 0 || flags != 0) {
    const std::vector<PlaylistEntry> found = entries();
    if (index >= qsizetype(found.size())) return {};
    return object(found[size_t(index)].track, found[size_t(index)].position);
  }
  if (isLibrary) {
    const TrackRow track = context.store.tracks().at(index);
    return track == TrackRow::None ? ScriptObjectPtr() : object(track, 0);
  }
  const PlaylistEntry entry = context.store.entries().at(playlist, index);
  return entry.track == TrackRow::None ? ScriptObjectPtr() : object(entry.track, entry.position);
}

std::optional<TrackRows> PlaylistTracks::candidates(const QString &property, const ScriptValue &value) {
  TrackTable &tracks = context.store.tracks();
  const bool isText = value.is(ScriptValue::Type::Text);
  if (property == u"persistent id" && isText) {
    const std::optional<quint64> id = persistentIDOfText(value.text());
    return oneOrNone(id && value.text().size() == 16 ? tracks.withPersistentID(*id) : TrackRow::None);
  }
  if ((property == u"database id" || property == u"id") && value.is(ScriptValue::Type::Integer)) {
    return oneOrNone(tracks.withDatabaseID(value.integer()));
  }
  // Without the key there is nothing to find by.
  if (property == u"name" && isText && !value.text().isEmpty()) return tracks.named(value.text());
  if (property == u"artist" && isText && !value.text().isEmpty()) return tracks.byArtist(value.text());
  if (property == u"location" && value.is(ScriptValue::Type::File)) {
    return tracks.atPath(pathOfValue(value).value_or(QString()));
  }
  if (!value.is(ScriptValue::Type::Boolean)) return {};
  const auto flagged = [&](int bit, bool set) { return tracks.withFlags(bit, set ? bit : 0); };
  if (property == u"compilation") return flagged(storeSchema::kCompilation, value.boolean());
  if (property == u"enabled") return flagged(storeSchema::kDisabled, !value.boolean());
  if (property == u"podcast") return flagged(storeSchema::kPodcast, value.boolean());
  if (property == u"disliked") return flagged(storeSchema::kDisliked, value.boolean());
  return {};
}

std::optional<ScriptObjects> PlaylistTracks::where(const QString &property, const ScriptValue &value) {
  std::optional<TrackRows> found = candidates(property, value);
  if (!found) return {};
  std::erase_if(*found, [this](TrackRow track) { return !isOfClass(track); });
  ScriptObjects objects;
  if (isLibrary) {
    for (const TrackRow track : *found) objects.push_back(object(track, 0));
    return objects;
  }
  std::vector<PlaylistEntry> places;
  constexpr size_t kFew = 32;
  if (found->size() <= kFew) {
    for (const TrackRow track : *found) {
      const std::vector<PlaylistEntry> some = context.store.entries().ofTrack(playlist, track);
      places.insert(places.end(), some.begin(), some.end());
    }
    std::sort(places.begin(), places.end(),
              [](const PlaylistEntry &a, const PlaylistEntry &b) { return a.position < b.position; });
  } else {
    const std::unordered_set<TrackRow> wanted(found->begin(), found->end());
    for (const PlaylistEntry &entry : context.store.entries().all(playlist)) {
      if (wanted.contains(entry.track)) places.push_back(entry);
    }
  }
  for (const auto &[position, track] : places) objects.push_back(object(track, position));
  return objects;
}

std::optional<ScriptListItems> PlaylistTracks::column(const QString &property) {
  const TrackField *field = trackField(property);
  if (!field) return {};
  ScriptListItems items;
  TrackTable &tracks = context.store.tracks();
  if (isLibrary && mask == 0 && flags == 0 && field->key != Key()) {
    tracks.visitColumn(field->key, [&](TrackRow, const Value &value) {
      items.push_back(field->read([&value](Key) { return value; }));
    });
    return items;
  }
  if (mask == 0 && flags == 0 && field->key != Key()) {
    // One statement for all entries: a look-up for each costs a lock of the file.
    tracks.visitColumnOf(playlist, field->key, [&](const Value &value) {
      items.push_back(field->read([&value](Key) { return value; }));
    });
    return items;
  }
  for (const PlaylistEntry &entry : entries()) {
    items.push_back(field->read([&](Key key) { return tracks.value(entry.track, key); }));
  }
  return items;
}
