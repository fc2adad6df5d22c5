#include "keeper/library/ArtworkObject.h"

#include "audio/AudioInfoTag.h"
#include "keeper/library/Refusal.h"
#include "keeper/library/TrackEditing.h"
#include "keeper/library/TrackObject.h"
#include "values/Keys.h"

namespace {

AudioInfoTagPtr tagOf(KeeperContext &context, TrackRow track) {
  const QString path = trackEditing::existingFile(context, track);
  return path.isEmpty() ? AudioInfoTagPtr() : AudioInfoTag::tagWithPath(path);
}

/// Puts a picture in the place of the one at an index; the others keep their order.
void replaceImage(AudioInfoTag &tag, qsizetype index, const ID3ImagePtr &picture) {
  std::vector<ID3ImagePtr> pictures = tag.images();
  if (index < qsizetype(pictures.size())) {
    picture->setPictureType(pictures[size_t(index)]->type());
    pictures[size_t(index)] = picture;
  } else {
    pictures.push_back(picture);
  }
  tag.removeAllImages();
  for (const ID3ImagePtr &each : pictures) tag.addImage(each);
}

}  // namespace

qsizetype ArtworkObject::countOf(KeeperContext &context, TrackRow track) {
  if (const AudioInfoTagPtr tag = tagOf(context, track)) return std::max<qsizetype>(0, tag->numberOfImages());
  return qsizetype(context.store.tracks().value(track, keys::ArtworkCount).toInteger());
}

void ArtworkObject::remove() {
  if (!exists()) throw refusal::cannotGet(u"that artwork"_qs);
  trackEditing::changeTag(context, track, [this](AudioInfoTag &tag) { tag.removeImageAtIndex(index); });
}

bool ArtworkObject::isSame(const ScriptObject &other) const {
  const auto *artwork = dynamic_cast<const ArtworkObject *>(&other);
  return artwork && artwork->track == track && artwork->index == index;
}

bool ArtworkObject::exists() const {
  return withStoreErrors([&] { return index < countOf(context, track); });
}

ScriptValue ArtworkObject::property(const QString &term) {
  if (term == u"properties") {
    ScriptRecordFields fields;
    for (const QString &each :
         {u"class"_qs, u"index"_qs, u"format"_qs, u"kind"_qs, u"description"_qs, u"downloaded"_qs}) {
      fields.emplace_back(each, property(each));
    }
    return ScriptValue::record(std::move(fields));
  }
  if (term == u"class") return ScriptClassName{className()};
  if (term == u"index") return qint64(index + 1);
  if (term == u"container") {
    return ScriptObjectPtr(std::make_shared<TrackObject>(context, track, context.store.playlists().master()));
  }
  const AudioInfoTagPtr tag = withStoreErrors([&] { return tagOf(context, track); });
  const std::vector<ID3ImagePtr> pictures = tag ? tag->images() : std::vector<ID3ImagePtr>();
  if (index >= qsizetype(pictures.size())) throw refusal::cannotGet(u"that artwork"_qs);
  ID3Image &picture = *pictures[size_t(index)];
  if (term == u"data" || term == u"raw data") return picture.imageData();
  if (term == u"format") {
    return ScriptClassName{picture.mimeFormat() == u"image/png" ? u"png picture"_qs : u"jpeg picture"_qs};
  }
  if (term == u"kind") return qint64(picture.type());
  if (term == u"description") return picture.description().isNull() ? QString(u""_qs) : picture.description();
  if (term == u"downloaded") return false;
  throw refusal::cannotGet(term + u" of that artwork"_qs);
}

void ArtworkObject::setProperty(const QString &term, const ScriptValue &value) {
  if (term != u"data" && term != u"raw data") {
    property(term);  // -1728 for one that artworks do not have
    throw refusal::readOnly(term);
  }
  if (!value.is(ScriptValue::Type::Data) || value.data().isEmpty()) throw refusal::unfit(term);
  const ID3ImagePtr picture = ID3Image::imageWithDataMimeType(value.data(), {});
  if (picture->autodetectMIMEFormat().isNull()) throw refusal::unfit(term, u"it is no picture"_qs);
  // The picture of the front, as players look for it.
  constexpr qint32 kFrontCover = 3;
  picture->setPictureType(kFrontCover);
  trackEditing::changeTag(context, track, [&](AudioInfoTag &tag) { replaceImage(tag, index, picture); });
}

qsizetype ArtworkObject::elementCount(const QString &className) {
  throw refusal::cannotGet(u"every %1 of that artwork"_qs.arg(className));
}
ScriptObjects ArtworkObject::elements(const QString &className) {
  throw refusal::cannotGet(u"every %1 of that artwork"_qs.arg(className));
}
ScriptObjectPtr ArtworkObject::elementAt(const QString &className, qsizetype) {
  throw refusal::cannotGet(u"every %1 of that artwork"_qs.arg(className));
}
std::optional<ScriptObjects> ArtworkObject::elementsWhere(const QString &, const QString &,
                                                          const ScriptValue &) {
  return {};
}
std::optional<ScriptListItems> ArtworkObject::column(const QString &, const QString &) {
  return {};
}
