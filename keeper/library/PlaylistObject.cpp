#include "keeper/library/PlaylistObject.h"

#include "keeper/library/KeyEdits.h"
#include "keeper/library/MusicDictionary.h"
#include "keeper/library/PlaylistTracks.h"
#include "keeper/library/Refusal.h"
#include "keeper/library/SourceObject.h"
#include "keeper/library/StoreBatch.h"
#include "keeper/library/TrackFields.h"
#include "platform/keeper/StoreSchema.h"
#include "values/Keys.h"
#include "values/PersistentID.h"

namespace {

using namespace storeSchema;

ScriptConstant specialKind(const PlaylistInfo &info) {
  if (info.flags & kMaster) return {u"library"_qs};
  if (info.flags & kFolder) return {u"folder"_qs};
  switch (info.distinguishedKind) {
    case 2:
      return {u"movies"_qs};
    case 3:
      return {u"tv shows"_qs};
    case 4:
      return {u"music"_qs};
    case 5:
      return {u"books"_qs};
    case 10:
      return {u"podcasts"_qs};
    case 19:
      return {u"purchased music"_qs};
    case 22:
      return {u"party shuffle"_qs};
    case 26:
      return {u"genius"_qs};
    case 31:
      return {u"itunes u"_qs};
    case 0:
      return {u"none"_qs};
    default:
      // One of the application's own lists all the same: not a list that the user fills.
      return {u"unknown"_qs};
  }
}

/// Flags that scripts may change, by the key that stores them.
Key changeableFlag(const QString &term) {
  if (term == u"shared") return keys::Shared;
  if (term == u"favorited") return keys::Loved;
  if (term == u"disliked") return keys::Disliked;
  return {};
}

}  // namespace

QString PlaylistObject::classOf(const PlaylistInfo &info) {
  if (info.flags & kMaster) return u"library playlist"_qs;
  return info.flags & kFolder ? u"folder playlist"_qs : u"user playlist"_qs;
}

bool PlaylistObject::isOf(const PlaylistInfo &info, const QString &className) {
  return musicDictionary().isKindOf(classOf(info), className);
}

const PlaylistInfo &PlaylistObject::info() const {
  const PlaylistInfo *found = context.store.playlists().info(row);
  if (!found) throw refusal::cannotGet(u"that playlist"_qs);
  return *found;
}

bool PlaylistObject::takesTracks() const {
  return (info().flags & (kMaster | kFolder | kSmart | kGenius | kGeniusMix)) == 0;
}

QString PlaylistObject::className() const {
  return withStoreErrors([&] { return classOf(info()); });
}

bool PlaylistObject::isSame(const ScriptObject &other) const {
  const auto *playlist = dynamic_cast<const PlaylistObject *>(&other);
  return playlist && playlist->row == row;
}

bool PlaylistObject::exists() const {
  return withStoreErrors([&] { return context.store.playlists().exists(row); });
}

ScriptValue PlaylistObject::property(const QString &term) {
  return withStoreErrors([&]() -> ScriptValue {
    if (term != u"properties") return ownProperty(term);
    ScriptRecordFields fields;
    for (const QString &each :
         {u"class"_qs, u"id"_qs, u"index"_qs, u"name"_qs, u"persistent id"_qs, u"duration"_qs, u"size"_qs,
          u"time"_qs, u"visible"_qs, u"special kind"_qs, u"smart"_qs, u"genius"_qs, u"shared"_qs}) {
      fields.emplace_back(each, ownProperty(each));
    }
    return ScriptValue::record(std::move(fields));
  });
}

ScriptValue PlaylistObject::ownProperty(const QString &term) {
  PlaylistTable &playlists = context.store.playlists();
  const PlaylistInfo &known = info();
  if (term == u"name") return known.name;
  if (term == u"persistent id") return hexPersistentID(known.persistentID);
  if (term == u"special kind") return specialKind(known);
  if (term == u"smart") return (known.flags & kSmart) != 0;
  if (term == u"genius") return (known.flags & (kGenius | kGeniusMix)) != 0;
  if (term == u"visible") return (known.flags & kHidden) == 0;
  if (term == u"class") return ScriptClassName{classOf(known)};
  if (term == u"container") return ScriptObjectPtr(std::make_shared<SourceObject>(context));
  if (term == u"id") return playlists.value(row, keys::PlaylistID).toInteger();
  if (term == u"description") return playlists.value(row, keys::Description).toText();
  if (term == u"index") {
    const std::vector<PlaylistInfo> &all = playlists.all();
    return qint64(std::find_if(all.begin(), all.end(), [this](const auto &each) { return each.row == row; }) -
                  all.begin() + 1);
  }
  if (term == u"parent") {
    if (known.parent == PlaylistRow::None) throw refusal::cannotGet(u"the parent of that playlist"_qs);
    return ScriptObjectPtr(std::make_shared<PlaylistObject>(context, known.parent));
  }
  if (term == u"duration") return sum(keys::TotalTime).integer() / 1000;
  if (term == u"time") return durationText(sum(keys::TotalTime).integer() / 1000);
  if (term == u"size") return sum(keys::Size);
  if (term == u"shuffle") return false;
  if (term == u"song repeat") return ScriptConstant{u"off"_qs};
  if (const Key flag = changeableFlag(term); !flag.isAbsent()) return playlists.value(row, flag).toBool();
  throw refusal::cannotGet(term + u" of that playlist"_qs);
}

ScriptValue PlaylistObject::sum(Key key) {
  TrackTable &tracks = context.store.tracks();
  qint64 total = 0;
  if (info().flags & kMaster) {
    tracks.visitColumn(key, [&total](TrackRow, const Value &value) { total += value.toInteger(); });
  } else {
    for (const TrackRow track : context.store.entries().tracks(row))
      total += tracks.value(track, key).toInteger();
  }
  return total;
}

void PlaylistObject::setProperty(const QString &term, const ScriptValue &value) {
  withStoreErrors([&] {
    PlaylistTable &playlists = context.store.playlists();
    if (term == u"properties") return setProperties(value);
    const bool isText = term == u"name" || term == u"description";
    const Key flag = changeableFlag(term);
    if (!isText && flag.isAbsent()) {
      ownProperty(term);  // -1728 for one that playlists do not have
      throw refusal::readOnly(term);
    }
    if (info().flags & kMaster) throw refusal::readOnly(term);
    if (isText) {
      const std::optional<QString> text = textOfValue(value);
      if (!text || (term == u"name" && text->isEmpty())) throw refusal::unfit(term);
      playlists.set(row, {keyEdits::setText(term == u"name" ? keys::Name : keys::Description, *text)});
      return;
    }
    const std::optional<bool> given = flagOfValue(value);
    if (!given) throw refusal::unfit(term);
    playlists.set(row, {keyEdits::setFlag(flag, *given)});
  });
}

void PlaylistObject::setProperties(const ScriptValue &value) {
  if (!value.is(ScriptValue::Type::Record)) throw refusal::unfit(u"properties"_qs);
  StoreBatch batch(context.store);
  for (const auto &[term, each] : value.fields()) setProperty(term, each);
  batch.commit();
}

namespace {

void requireTracks(const QString &className) {
  if (!musicDictionary().isKindOf(className, u"track"_qs)) {
    throw refusal::cannotGet(u"every %1 of that playlist"_qs.arg(className));
  }
}

}  // namespace

qsizetype PlaylistObject::elementCount(const QString &className) {
  requireTracks(className);
  return withStoreErrors([&] { return info(), PlaylistTracks(context, row, className).count(); });
}

ScriptObjects PlaylistObject::elements(const QString &className) {
  requireTracks(className);
  return withStoreErrors([&] { return info(), PlaylistTracks(context, row, className).all(); });
}

ScriptObjectPtr PlaylistObject::elementAt(const QString &className, qsizetype index) {
  requireTracks(className);
  return withStoreErrors([&] { return info(), PlaylistTracks(context, row, className).at(index); });
}

std::optional<ScriptObjects> PlaylistObject::elementsWhere(const QString &className, const QString &property,
                                                           const ScriptValue &value) {
  requireTracks(className);
  return withStoreErrors(
      [&] { return info(), PlaylistTracks(context, row, className).where(property, value); });
}

std::optional<ScriptListItems> PlaylistObject::column(const QString &className, const QString &property) {
  requireTracks(className);
  return withStoreErrors([&] { return info(), PlaylistTracks(context, row, className).column(property); });
}
