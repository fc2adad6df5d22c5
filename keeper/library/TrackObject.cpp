#include "keeper/library/TrackObject.h"

#include "keeper/library/ArtworkObject.h"
#include "keeper/library/KeyEdits.h"
#include "keeper/library/PlaylistObject.h"
#include "keeper/library/Refusal.h"
#include "keeper/library/TrackEditing.h"
#include "keeper/library/TrackFields.h"
#include "platform/keeper/StoreSchema.h"
#include "values/Keys.h"

bool TrackObject::isInLibrary() const {
  return list == context.store.playlists().master();
}

QString TrackObject::className() const {
  return withStoreErrors([&] {
    const int flags = context.store.tracks().flags(row);
    if (flags & storeSchema::kIsRemote) return u"shared track"_qs;
    if (flags & storeSchema::kIsAddress) return u"url track"_qs;
    return u"file track"_qs;
  });
}

bool TrackObject::isSame(const ScriptObject &other) const {
  const auto *track = dynamic_cast<const TrackObject *>(&other);
  return track && track->row == row && track->list == list && (track->place == place || isInLibrary());
}

bool TrackObject::exists() const {
  return withStoreErrors([&] {
    if (isInLibrary()) return context.store.tracks().exists(row);
    return index().has_value();
  });
}

std::optional<qsizetype> TrackObject::index() const {
  if (isInLibrary()) return context.store.tracks().indexOf(row);
  EntryTable &entries = context.store.entries();
  const std::optional<qsizetype> at = entries.indexOf(list, place);
  return at && entries.at(list, *at).track == row ? at : std::nullopt;
}

void TrackObject::requireExistence() const {
  if (!exists()) throw refusal::cannotGet(u"that track"_qs);
}

ScriptValue TrackObject::property(const QString &term) {
  return withStoreErrors([&]() -> ScriptValue {
    requireExistence();
    TrackTable &tracks = context.store.tracks();
    if (term == u"location") return trackEditing::location(context, row);
    if (term == u"lyrics") return trackEditing::lyrics(context, row);
    if (term == u"index") return qint64(index().value_or(0) + 1);
    if (term == u"class") return ScriptClassName{className()};
    if (term == u"container") return ScriptObjectPtr(std::make_shared<PlaylistObject>(context, list));
    if (term == u"properties") return allProperties();
    if (term == u"address" && className() == u"url track") return tracks.value(row, keys::Location).toText();
    if (const TrackField *field = trackField(term)) {
      return field->read([&](Key key) { return tracks.value(row, key); });
    }
    throw refusal::cannotGet(term + u" of that track"_qs);
  });
}

ScriptValue TrackObject::allProperties() {
  const Dictionary record = context.store.tracks().record(row);
  const KeyReader reader = [&](Key key) { return record.value(key); };
  ScriptRecordFields fields{{u"class"_qs, ScriptClassName{className()}},
                            {u"index"_qs, qint64(index().value_or(0) + 1)}};
  for (const TrackField &field : trackFields()) fields.emplace_back(field.term, field.read(reader));
  if (className() == u"file track") {
    fields.emplace_back(u"location"_qs, trackEditing::location(context, row));
  }
  return ScriptValue::record(std::move(fields));
}

void TrackObject::setProperty(const QString &term, const ScriptValue &value) {
  withStoreErrors([&] {
    requireExistence();
    if (term == u"location") return trackEditing::setLocation(context, row, value);
    if (term == u"lyrics") return trackEditing::setLyrics(context, row, value);
    if (term == u"properties") return setProperties(value);
    trackEditing::change(context, row, changesFor(term, value));
  });
}

KeyChanges TrackObject::changesFor(const QString &term, const ScriptValue &value) const {
  if (term == u"address" && className() == u"url track") {
    const std::optional<QString> address = textOfValue(value);
    if (!address || address->isEmpty()) throw refusal::unfit(term);
    return {keyEdits::setText(keys::Location, *address)};
  }
  const TrackField *field = trackField(term);
  if (!field && term != u"index" && term != u"class" && term != u"container") {
    throw refusal::cannotGet(term + u" of that track"_qs);
  }
  if (!field || !field->write) throw refusal::readOnly(term);
  return field->write(value, [this](Key key) { return context.store.tracks().value(row, key); });
}

void TrackObject::setProperties(const ScriptValue &value) {
  if (!value.is(ScriptValue::Type::Record)) throw refusal::unfit(u"properties"_qs);
  KeyChanges changes;
  ScriptRecordFields ofFile;
  for (const auto &[term, each] : value.fields()) {
    if (term == u"location" || term == u"lyrics") {
      ofFile.emplace_back(term, each);
      continue;
    }
    const KeyChanges some = changesFor(term, each);
    changes.insert(changes.end(), some.begin(), some.end());
  }
  trackEditing::change(context, row, changes);
  for (const auto &[term, each] : ofFile) setProperty(term, each);
}

qsizetype TrackObject::elementCount(const QString &className) {
  if (className != u"artwork") throw refusal::cannotGet(u"every %1 of that track"_qs.arg(className));
  return withStoreErrors([&] {
    requireExistence();
    return ArtworkObject::countOf(context, row);
  });
}

ScriptObjects TrackObject::elements(const QString &className) {
  ScriptObjects artworks;
  const qsizetype count = elementCount(className);
  for (qsizetype index = 0; index < count; ++index) {
    artworks.push_back(std::make_shared<ArtworkObject>(context, row, index));
  }
  return artworks;
}

ScriptObjectPtr TrackObject::elementAt(const QString &className, qsizetype index) {
  if (index < 0 || index >= elementCount(className)) return {};
  return std::make_shared<ArtworkObject>(context, row, index);
}

std::optional<ScriptObjects> TrackObject::elementsWhere(const QString &, const QString &,
                                                        const ScriptValue &) {
  return {};
}

std::optional<ScriptListItems> TrackObject::column(const QString &, const QString &) {
  return {};
}
