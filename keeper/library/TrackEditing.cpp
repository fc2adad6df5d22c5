#include "keeper/library/TrackEditing.h"
#include "keeper/library/StoreBatch.h"

#include <QFileInfo>

#include "audio/SongFile.h"
#include "keeper/library/KeyEdits.h"
#include "keeper/library/MediaFolder.h"
#include "keeper/library/Refusal.h"
#include "keeper/library/TagMemory.h"
#include "keeper/library/TrackFile.h"
#include "platform/FileAddress.h"
#include "support/BMLog.h"
#include "values/Keys.h"

namespace {

bool namesTheFile(const KeyChanges &changes) {
  return std::any_of(changes.begin(), changes.end(), [](const DictionaryEntry &entry) {
    return entry.key == keys::Name || entry.key == keys::Artist || entry.key == keys::AlbumArtist ||
           entry.key == keys::Album || entry.key == keys::TrackNumber || entry.key == keys::DiscNumber ||
           entry.key == keys::DiscCount || entry.key == keys::Compilation;
  });
}

void organise(KeeperContext &context, TrackRow track) {
  const QString problem = mediaFolder::organise(context.store, track);
  if (!problem.isEmpty()) BMLog("!! organise: %@", problem);
}

/// What of the changes differs from what the track has.
KeyChanges realChanges(TrackTable &tracks, TrackRow track, KeyChanges changes) {
  std::erase_if(changes, [&](const DictionaryEntry &entry) {
    return isEqual(tracks.value(track, entry.key), entry.value);
  });
  return changes;
}

KeyChanges changesOf(const Dictionary &record) {
  return {record.begin(), record.end()};
}

}  // namespace

namespace trackEditing {

QString filePath(KeeperContext &context, TrackRow track) {
  const QString address = context.store.tracks().value(track, keys::Location).toText();
  return address.startsWith(u"file:", Qt::CaseInsensitive) ? pathOfFileAddress(address) : QString();
}

QString existingFile(KeeperContext &context, TrackRow track) {
  const QString path = filePath(context, track);
  return !path.isEmpty() && QFileInfo(path).isFile() ? path : QString();
}

ScriptValue location(KeeperContext &context, TrackRow track) {
  const QString path = existingFile(context, track);
  return path.isEmpty() ? ScriptValue::missing() : ScriptValue(ScriptFile{path, true});
}

void setLocation(KeeperContext &context, TrackRow track, const ScriptValue &value) {
  const std::optional<QString> path = pathOfValue(value);
  if (!path) throw refusal::unfit(u"location"_qs);
  const QFileInfo file(*path);
  if (!file.exists()) throw refusal::fileNotFound(*path);
  if (!file.isFile()) throw refusal::unfit(u"location"_qs, *path + u" is no file"_qs);
  change(context, track,
         {keyEdits::setText(keys::Location, fileAddressOfPath(*path)),
          keyEdits::setText(keys::TrackType, u"File"_qs)});
}

QString lyrics(KeeperContext &context, TrackRow track) {
  const QString path = existingFile(context, track);
  const AudioInfoTagPtr tag = path.isEmpty() ? AudioInfoTagPtr() : AudioInfoTag::tagWithPath(path);
  return tag && !tag->lyrics().isNull() ? tag->lyrics() : QString(u""_qs);
}

void setLyrics(KeeperContext &context, TrackRow track, const ScriptValue &value) {
  const std::optional<QString> text = textOfValue(value);
  if (!text) throw refusal::unfit(u"lyrics"_qs);
  if (*text == lyrics(context, track)) return;
  changeTag(context, track, [&text](AudioInfoTag &tag) { tag.setLyrics(*text); });
}

void changeTag(KeeperContext &context, TrackRow track, const std::function<void(AudioInfoTag &)> &edit) {
  const QString path = existingFile(context, track);
  if (path.isEmpty()) throw refusal::fileNotFound(filePath(context, track));
  const AudioInfoTagPtr tag = AudioInfoTag::tagWithPath(path);
  if (!tag) throw refusal::error(scriptErrors::kNotWritable, path + u" has no tag that can be read"_qs);
  edit(*tag);
  QString why;
  if (!QFileInfo(path).isWritable()) why = u"the file is read-only"_qs;
  if (!why.isEmpty() || !tag->modifySongFileAtPathError(path, &why)) {
    throw refusal::error(scriptErrors::kNotWritable, u"%1 can't be written: %2"_qs.arg(path, why));
  }
  KeyChanges changes = changesOf(trackFile::stamp(path).value_or(Dictionary()));
  const qint32 images = tag->numberOfImages();
  changes.push_back(keyEdits::setNumber(keys::ArtworkCount, std::max(0, images)));
  context.store.tracks().set(track, changes);
}

void change(KeeperContext &context, TrackRow track, const KeyChanges &changes) {
  LibraryStore &store = context.store;
  const KeyChanges real = realChanges(store.tracks(), track, changes);
  if (real.empty()) return;
  {
    StoreBatch batch(store);
    if (!filePath(context, track).isEmpty()) tagMemory::rememberBefore(store, track, real);
    store.tracks().set(track, real);
    batch.commit();
  }
  if (namesTheFile(real) && context.settings().organise) organise(context, track);
}

void refresh(KeeperContext &context, TrackRow track) {
  LibraryStore &store = context.store;
  const QString path = existingFile(context, track);
  if (path.isEmpty()) throw refusal::fileNotFound(filePath(context, track));
  TrackTable &tracks = store.tracks();
  if (trackFile::isUnchanged(path, tracks.value(track, keys::Size),
                             tracks.value(track, keys::DateModified))) {
    return;
  }
  const Dictionary read = trackFile::record(path);
  KeyChanges fromFile = changesOf(read.isNull() ? trackFile::stamp(path).value_or(Dictionary()) : read);
  if (!read.isNull() && !read.contains(keys::ArtworkCount))
    fromFile.push_back(keyEdits::remove(keys::ArtworkCount));
  StoreBatch batch(store);
  tagMemory::filter(store, track, fromFile);
  tracks.set(track, realChanges(tracks, track, fromFile));
  batch.commit();
}

}  // namespace trackEditing
