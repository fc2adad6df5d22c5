#include "keeper/library/SourceObject.h"

#include <QStorageInfo>

#include "keeper/library/PlaylistElements.h"
#include "keeper/library/PlaylistObject.h"
#include "keeper/library/Refusal.h"
#include "values/Keys.h"

namespace {

void requirePlaylists(const QString &className) {
  if (!playlistElements::isPlaylistClass(className)) {
    throw refusal::cannotGet(u"every %1 of that source"_qs.arg(className));
  }
}

}  // namespace

bool SourceObject::isSame(const ScriptObject &other) const {
  return dynamic_cast<const SourceObject *>(&other) != nullptr;
}

ScriptValue SourceObject::property(const QString &term) {
  return withStoreErrors([&]() -> ScriptValue {
    if (term == u"properties") {
      ScriptRecordFields fields;
      for (const QString &each : {u"class"_qs, u"id"_qs, u"index"_qs, u"name"_qs, u"persistent id"_qs,
                                  u"kind"_qs, u"capacity"_qs, u"free space"_qs}) {
        fields.emplace_back(each, property(each));
      }
      return ScriptValue::record(std::move(fields));
    }
    if (term == u"name") return u"Library"_qs;
    if (term == u"kind") return ScriptConstant{u"library"_qs};
    if (term == u"class") return ScriptClassName{className()};
    if (term == u"index" || term == u"id") return 1;
    if (term == u"persistent id") return context.store.root().value(keys::LibraryPersistentID).toText();
    if (term == u"capacity") return QStorageInfo(context.store.folder()).bytesTotal();
    if (term == u"free space") return QStorageInfo(context.store.folder()).bytesAvailable();
    throw refusal::cannotGet(term + u" of that source"_qs);
  });
}

void SourceObject::setProperty(const QString &term, const ScriptValue &) {
  property(term);  // -1728 for one that it does not have
  throw refusal::readOnly(term);
}

qsizetype SourceObject::elementCount(const QString &className) {
  return qsizetype(elements(className).size());
}

ScriptObjects SourceObject::elements(const QString &className) {
  requirePlaylists(className);
  return withStoreErrors([&] { return playlistElements::all(context, className); });
}

ScriptObjectPtr SourceObject::elementAt(const QString &className, qsizetype index) {
  if (className == u"library playlist" && index == 0) {
    return withStoreErrors(
        [&] { return std::make_shared<PlaylistObject>(context, context.store.playlists().master()); });
  }
  const ScriptObjects all = elements(className);
  return index < 0 || index >= qsizetype(all.size()) ? ScriptObjectPtr() : all[size_t(index)];
}

std::optional<ScriptObjects> SourceObject::elementsWhere(const QString &className, const QString &property,
                                                         const ScriptValue &value) {
  requirePlaylists(className);
  return withStoreErrors([&] { return playlistElements::where(context, className, property, value); });
}

std::optional<ScriptListItems> SourceObject::column(const QString &className, const QString &property) {
  requirePlaylists(className);
  return withStoreErrors([&] { return playlistElements::column(context, className, property); });
}
