#include "keeper/library/PlaylistElements.h"

#include "keeper/library/MusicDictionary.h"
#include "keeper/library/PlaylistObject.h"
#include "keeper/library/Refusal.h"
#include "values/PersistentID.h"

namespace {

/// What can be read without the tracks.
bool isCheap(const QString &property) {
  static const QStringList cheap = {u"name"_qs,   u"persistent id"_qs, u"special kind"_qs, u"smart"_qs,
                                    u"genius"_qs, u"visible"_qs,       u"class"_qs,        u"id"_qs,
                                    u"shared"_qs, u"favorited"_qs,     u"disliked"_qs};
  return cheap.contains(property);
}

bool isEqualText(const ScriptValue &a, const ScriptValue &b) {
  return a.text().compare(b.text(), Qt::CaseInsensitive) == 0;
}

/// Nothing if the value is of another type than the property.
std::optional<bool> equals(const ScriptValue &own, const ScriptValue &value) {
  if (own.type() != value.type()) return {};
  switch (own.type()) {
    case ScriptValue::Type::Text:
      return isEqualText(own, value);
    case ScriptValue::Type::Boolean:
      return own.boolean() == value.boolean();
    case ScriptValue::Type::Integer:
      return own.integer() == value.integer();
    case ScriptValue::Type::Constant:
    case ScriptValue::Type::ClassName:
      return own.term() == value.term();
    default:
      return {};
  }
}

}  // namespace

namespace playlistElements {

bool isPlaylistClass(const QString &className) {
  return musicDictionary().isKindOf(className, u"playlist"_qs);
}

ScriptObjects all(KeeperContext &context, const QString &className) {
  ScriptObjects objects;
  for (const PlaylistInfo &info : context.store.playlists().all()) {
    if (PlaylistObject::isOf(info, className)) {
      objects.push_back(std::make_shared<PlaylistObject>(context, info.row));
    }
  }
  return objects;
}

std::optional<ScriptObjects> where(KeeperContext &context, const QString &className, const QString &property,
                                   const ScriptValue &value) {
  PlaylistTable &playlists = context.store.playlists();
  ScriptObjects objects;
  if (property == u"persistent id" && value.is(ScriptValue::Type::Text)) {
    const std::optional<quint64> id = persistentIDOfText(value.text());
    const PlaylistRow row =
        id && value.text().size() == 16 ? playlists.withPersistentID(*id) : PlaylistRow::None;
    const PlaylistInfo *info = playlists.info(row);
    if (info && PlaylistObject::isOf(*info, className)) {
      objects.push_back(std::make_shared<PlaylistObject>(context, row));
    }
    return objects;
  }
  if (!isCheap(property)) return {};
  for (const ScriptObjectPtr &playlist : all(context, className)) {
    const std::optional<bool> isMatch = equals(playlist->property(property), value);
    if (!isMatch) return {};
    if (*isMatch) objects.push_back(playlist);
  }
  return objects;
}

std::optional<ScriptListItems> column(KeeperContext &context, const QString &className,
                                      const QString &property) {
  if (!isCheap(property)) return {};
  ScriptListItems items;
  for (const ScriptObjectPtr &playlist : all(context, className))
    items.push_back(playlist->property(property));
  return items;
}

}  // namespace playlistElements
