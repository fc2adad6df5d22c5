#include "keeper/library/LibraryCommands.h"

#include <map>

#include "keeper/library/ArtworkObject.h"
#include "keeper/library/CommandThings.h"
#include "keeper/library/LibraryAdding.h"
#include "keeper/library/PlaylistObject.h"
#include "keeper/library/Refusal.h"
#include "keeper/library/SourceObject.h"
#include "keeper/library/StoreBatch.h"
#include "keeper/library/TagMemory.h"
#include "keeper/library/TrackEditing.h"
#include "keeper/library/TrackObject.h"
#include "platform/keeper/StoreSchema.h"
#include "values/Keys.h"

namespace {

template <class Object>
std::shared_ptr<Object> as(const ScriptObjectPtr &object) {
  return std::dynamic_pointer_cast<Object>(object);
}

void requireTaking(const PlaylistObject &playlist) {
  if (playlist.info().flags & storeSchema::kMaster) throw refusal::unfit(u"that playlist"_qs);
  if (!playlist.takesTracks()) throw refusal::readOnly(u"the tracks of that playlist"_qs);
}

void requireExistence(const ScriptObject &object) {
  if (!object.exists()) throw refusal::cannotGet(u"that "_qs + object.className());
}

/// The folder that a place for playlists means; none for the top, which the library, its source and the
/// application stand for. -10010 for anything else.
PlaylistRow folderOf(const ScriptValue &place, const QString &label) {
  if (!place.is(ScriptValue::Type::Object)) commandThings::throwWrongClass(label);
  const auto playlist = as<PlaylistObject>(place.object());
  const bool isSource = as<SourceObject>(place.object()) || as<ScriptApplication>(place.object());
  if (!playlist && isSource) return PlaylistRow::None;
  const int flags = playlist ? playlist->info().flags : 0;
  if (flags & storeSchema::kFolder) return playlist->playlist();
  if ((flags & storeSchema::kMaster) == 0) commandThings::throwWrongClass(label);
  return PlaylistRow::None;
}

/// What a `delete` is to remove, by what has to be told to the store.
struct Removal {
  TrackRows tracks;
  PlaylistRows playlists;
  std::map<PlaylistRow, std::vector<qint64>> entries;
  /// The last first, so that the places of the others stay.
  std::vector<std::shared_ptr<ArtworkObject>> artworks;
};

Removal planRemoval(KeeperContext &context, const ScriptCommand &command) {
  Removal removal;
  for (const ScriptObjectPtr &object : commandThings::of(command)) {
    requireExistence(*object);
    if (const auto track = as<TrackObject>(object)) {
      if (track->isInLibrary()) {
        removal.tracks.push_back(track->track());
      } else {
        const auto [places, isFirst] = removal.entries.try_emplace(track->playlist());
        if (isFirst) requireTaking(PlaylistObject(context, track->playlist()));
        places->second.push_back(track->position());
      }
    } else if (const auto playlist = as<PlaylistObject>(object)) {
      if (playlist->info().flags & storeSchema::kMaster) throw refusal::readOnly(u"the library"_qs);
      removal.playlists.push_back(playlist->playlist());
    } else if (const auto artwork = as<ArtworkObject>(object)) {
      removal.artworks.insert(removal.artworks.begin(), artwork);
    } else {
      throw refusal::notUnderstood(command.verb);
    }
  }
  return removal;
}

/// What plays must still be there.
void stopIfGone(KeeperContext &context) {
  const Player::Item *item = context.player.current();
  if (!item || item->track == TrackRow::None) return;
  const bool isThere =
      context.store.playlists().exists(item->playlist) && context.store.tracks().exists(item->track);
  if (!isThere) context.player.stop();
}

ScriptValue makeArtwork(KeeperContext &context, const ScriptCommand &command) {
  const auto track = commandThings::parameter<TrackObject>(command, u"at"_qs);
  const ScriptValue *given = command.parameter(u"with properties"_qs);
  const ScriptValue *bytes =
      given && given->is(ScriptValue::Type::Record) ? given->field(u"data"_qs) : nullptr;
  if (!track || !bytes)
    throw refusal::error(scriptErrors::kParameterMissing, u"An artwork needs a track and data."_qs);
  const qsizetype index = ArtworkObject::countOf(context, track->track());
  const auto made = std::make_shared<ArtworkObject>(context, track->track(), index);
  made->setProperty(u"data"_qs, *bytes);
  return ScriptObjectPtr(made);
}

QStringList wordsOf(const QString &text) {
  return text.toCaseFolded().split(u' ', Qt::SkipEmptyParts);
}

/// The texts that a search looks at.
QStringList searchedTexts(const Dictionary &record, const QString &field) {
  const auto text = [&record](Key key) { return record.value(key).toText(); };
  if (field == u"artists") return {text(keys::Artist), text(keys::AlbumArtist)};
  if (field == u"albums") return {text(keys::Album)};
  if (field == u"composers") return {text(keys::Composer)};
  if (field == u"names" || field == u"songs") return {text(keys::Name)};
  return {text(keys::Name), text(keys::Artist), text(keys::AlbumArtist), text(keys::Album),
          text(keys::Composer)};
}

bool matches(const QStringList &texts, const QStringList &words) {
  QStringList parts;
  for (const QString &text : texts) parts += wordsOf(text);
  return std::all_of(words.begin(), words.end(), [&parts](const QString &word) {
    return std::any_of(parts.begin(), parts.end(),
                       [&word](const QString &part) { return part.startsWith(word); });
  });
}

}  // namespace

namespace libraryCommands {

ScriptValue add(KeeperContext &context, const ScriptCommand &command) {
  if (command.direct.is(ScriptValue::Type::NoValue)) {
    throw refusal::error(scriptErrors::kParameterMissing, u"add needs a file."_qs);
  }
  const ScriptValue *to = command.parameter(u"to"_qs);
  const bool isToLibrary = to && to->is(ScriptValue::Type::Object) && !as<PlaylistObject>(to->object());
  auto playlist = isToLibrary ? nullptr : commandThings::parameter<PlaylistObject>(command, u"to"_qs);
  if (playlist && (playlist->info().flags & storeSchema::kMaster)) playlist = nullptr;
  if (playlist) requireTaking(*playlist);
  return libraryAdding::add(context, command.direct, playlist.get());
}

ScriptValue remove(KeeperContext &context, const ScriptCommand &command) {
  const Removal removal = planRemoval(context, command);
  StoreBatch batch(context.store);
  for (const TrackRow track : removal.tracks) tagMemory::forget(context.store, track);
  if (!removal.tracks.empty()) context.store.tracks().remove(removal.tracks);
  for (const auto &[playlist, positions] : removal.entries)
    context.store.entries().remove(playlist, positions);
  if (!removal.playlists.empty()) context.store.playlists().remove(removal.playlists);
  batch.commit();
  for (const auto &artwork : removal.artworks) artwork->remove();
  stopIfGone(context);
  return {};
}

ScriptValue duplicate(KeeperContext &context, const ScriptCommand &command) {
  const auto playlist = commandThings::parameter<PlaylistObject>(command, u"to"_qs);
  if (!playlist) throw refusal::error(scriptErrors::kParameterMissing, u"duplicate needs a playlist."_qs);
  requireTaking(*playlist);
  TrackRows tracks;
  for (const ScriptObjectPtr &object : commandThings::of(command)) {
    const auto track = as<TrackObject>(object);
    if (!track) throw refusal::notUnderstood(command.verb);
    requireExistence(*track);
    tracks.push_back(track->track());
  }
  ScriptObjects made;
  for (const PlaylistEntry &entry : context.store.entries().append(playlist->playlist(), tracks)) {
    made.push_back(std::make_shared<TrackObject>(context, entry.track, playlist->playlist(), entry.position));
  }
  return commandThings::reply(made);
}

ScriptValue move(KeeperContext &context, const ScriptCommand &command) {
  const ScriptValue *to = command.parameter(u"to"_qs);
  if (!to) throw refusal::error(scriptErrors::kParameterMissing, u"move needs a folder."_qs);
  const PlaylistRow folder = folderOf(*to, u"to"_qs);
  const ScriptObjects objects = commandThings::of(command);
  StoreBatch batch(context.store);
  for (const ScriptObjectPtr &object : objects) {
    const auto playlist = as<PlaylistObject>(object);
    if (!playlist) throw refusal::notUnderstood(command.verb);
    if (playlist->info().flags & storeSchema::kMaster) throw refusal::readOnly(u"the library"_qs);
    if (!context.store.playlists().moveTo(playlist->playlist(), folder))
      throw refusal::unfit(u"that folder"_qs);
  }
  batch.commit();
  return commandThings::reply(objects);
}

ScriptValue make(KeeperContext &context, const ScriptCommand &command) {
  const ScriptValue *what = command.parameter(u"new"_qs);
  const QString className = what && what->is(ScriptValue::Type::ClassName) ? what->term() : QString();
  if (className == u"artwork") return makeArtwork(context, command);
  const bool isFolder = className == u"folder playlist";
  if (!isFolder && className != u"user playlist" && className != u"playlist") {
    throw refusal::error(scriptErrors::kWrongClass, u"Can't make that class of thing."_qs);
  }
  PlaylistRow folder = PlaylistRow::None;
  if (const ScriptValue *at = command.parameter(u"at"_qs)) folder = folderOf(*at, u"at"_qs);
  const Dictionary record = Dictionary::make();
  record.set(keys::Name, isFolder ? u"untitled folder"_qs : u"untitled playlist"_qs);
  if (isFolder) record.set(keys::Folder, true);
  const ScriptValue *given = command.parameter(u"with properties"_qs);
  StoreBatch batch(context.store);
  const auto made = std::make_shared<PlaylistObject>(context, context.store.playlists().make(record, folder));
  if (given) made->setProperty(u"properties"_qs, *given);
  batch.commit();
  return ScriptObjectPtr(made);
}

ScriptValue refresh(KeeperContext &context, const ScriptCommand &command) {
  for (const ScriptObjectPtr &object : commandThings::of(command)) {
    const auto track = as<TrackObject>(object);
    if (!track) throw refusal::notUnderstood(command.verb);
    requireExistence(*track);
    trackEditing::refresh(context, track->track());
  }
  return {};
}

ScriptValue search(KeeperContext &context, const ScriptCommand &command) {
  const ScriptObjects things = commandThings::of(command);
  const auto playlist = things.size() == 1 ? as<PlaylistObject>(things.front()) : nullptr;
  if (!playlist) throw refusal::notUnderstood(command.verb);
  const ScriptValue *text = command.parameter(u"for"_qs);
  const QStringList words = text ? wordsOf(textOfValue(*text).value_or(QString())) : QStringList();
  if (words.isEmpty())
    throw refusal::error(scriptErrors::kBadParameter, u"There is nothing to search for."_qs);
  const ScriptValue *only = command.parameter(u"only"_qs);
  const QString field = only && only->is(ScriptValue::Type::Constant) ? only->term() : QString();
  ScriptListItems found;
  for (const ScriptObjectPtr &object : playlist->elements(u"track"_qs)) {
    const Dictionary record = context.store.tracks().record(as<TrackObject>(object)->track());
    if (matches(searchedTexts(record, field), words)) found.push_back(object);
  }
  return ScriptValue::list(std::move(found));
}

}  // namespace libraryCommands
