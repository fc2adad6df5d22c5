#include "keeper/library/TagMemory.h"

#include <array>

#include "keeper/library/TrackTable.h"
#include "values/Keys.h"
#include "values/PersistentID.h"

namespace {

QString noteOf(LibraryStore &store, TrackRow track) {
  return u"tag of "_qs + hexPersistentID(store.tracks().persistentID(track));
}

/// What a key without a value reads as.
bool isEqualOrBothVoid(const Value &a, const Value &b) {
  const auto isVoid = [](const Value &value) {
    return value.isNull() || (value.isText() ? value.toText().isEmpty() : value.toInteger() == 0);
  };
  return isVoid(a) ? isVoid(b) : isEqual(a, b);
}

}  // namespace

namespace tagMemory {

bool isFromTag(Key key) {
  static const std::array fromTag = {
      keys::Name,       keys::Artist,    keys::AlbumArtist,     keys::Album,
      keys::Composer,   keys::Genre,     keys::Grouping,        keys::Comments,
      keys::Year,       keys::BPM,       keys::TrackNumber,     keys::TrackCount,
      keys::DiscNumber, keys::DiscCount, keys::Compilation,     keys::SortName,
      keys::SortArtist, keys::SortAlbum, keys::SortAlbumArtist, keys::SortComposer};
  return std::find(fromTag.begin(), fromTag.end(), key) != fromTag.end();
}

void rememberBefore(LibraryStore &store, TrackRow track, const KeyChanges &changes) {
  Dictionary known;
  for (const auto &[key, value] : changes) {
    if (!isFromTag(key)) continue;
    if (known.isNull()) {
      const Value note = store.note(noteOf(store, track));
      known = note.toDictionary().isNull() ? Dictionary::make() : note.toDictionary().copyMembers(true);
    }
    if (known.contains(key)) continue;
    const Value before = store.tracks().value(track, key);
    known.set(key, before.isNull() ? Value(QString(u""_qs)) : before);
  }
  if (!known.isNull()) store.setNote(noteOf(store, track), known);
}

void filter(LibraryStore &store, TrackRow track, KeyChanges &fromTag) {
  const Value note = store.note(noteOf(store, track));
  if (note.toDictionary().isNull()) return;
  const Dictionary known = note.toDictionary().copyMembers(true);
  std::erase_if(fromTag, [&](const DictionaryEntry &entry) {
    if (!known.contains(entry.key)) return false;
    if (isEqualOrBothVoid(known.value(entry.key), entry.value)) return true;
    known.remove(entry.key);
    return false;
  });
  store.setNote(noteOf(store, track), known.isEmpty() ? Value() : Value(known));
}

void forget(LibraryStore &store, TrackRow track) {
  const QString name = noteOf(store, track);
  if (!store.note(name).isNull()) store.setNote(name, Value());
}

}  // namespace tagMemory
