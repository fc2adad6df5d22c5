#include "keeper/library/LibraryAdding.h"

#include <QDirIterator>
#include <QFileInfo>

#include "keeper/library/CommandThings.h"
#include "keeper/library/MediaFolder.h"
#include "keeper/library/Refusal.h"
#include "keeper/library/StoreBatch.h"
#include "keeper/library/TrackFile.h"
#include "keeper/library/TrackObject.h"
#include "platform/FileAddress.h"
#include "platform/Platform.h"
#include "platform/keeper/StoreSchema.h"
#include "values/Keys.h"

namespace {

/// The kind of the list that holds all music.
constexpr qint64 kMusicList = 4;

void collectFiles(const QString &path, QStringList &files) {
  const QFileInfo info(path);
  if (!info.exists()) throw refusal::fileNotFound(path);
  if (!info.isDir()) {
    files.append(path);
    return;
  }
  QStringList inside;
  QDirIterator walk(path, QDir::Files, QDirIterator::Subdirectories);
  while (walk.hasNext()) inside.append(walk.next());
  inside.sort();
  files += inside;
}

QStringList filesOf(const ScriptValue &value) {
  QStringList files;
  const bool isList = value.is(ScriptValue::Type::List);
  for (const ScriptValue &item : isList ? value.items() : ScriptListItems{value}) {
    const std::optional<QString> path = pathOfValue(item);
    if (!path) throw refusal::error(scriptErrors::kCannotMake, u"Can't make that into a file."_qs);
    collectFiles(*path, files);
  }
  return files;
}

TrackRow knownTrack(KeeperContext &context, const QString &path) {
  for (const QString &name : {path, QFileInfo(path).canonicalFilePath()}) {
    const TrackRows known = context.store.tracks().atPath(name);
    if (!known.empty()) return known.front();
  }
  return TrackRow::None;
}

/// None for a file of a kind that the library does not take.
TrackRow addFile(KeeperContext &context, const QString &path) {
  if (const TrackRow known = knownTrack(context, path); known != TrackRow::None) return known;
  Dictionary record = trackFile::record(path);
  if (record.isNull()) return TrackRow::None;
  QString place = path;
  if (context.settings().copyToMediaFolder && !path.startsWith(mediaFolder::path(context.store) + u'/')) {
    QString error;
    place = mediaFolder::copyInto(context.store, path, record, &error);
    if (place.isEmpty()) throw refusal::error(scriptErrors::kHandlerFailed, error);
  }
  record.set(keys::DateAdded, platform().clock->now());
  record.set(keys::TrackType, QString(u"File"_qs));
  record.set(keys::Location, fileAddressOfPath(place));
  StoreBatch batch(context.store);
  const TrackRow track = context.store.tracks().add(record);
  for (const PlaylistInfo &info : context.store.playlists().all()) {
    if (info.distinguishedKind == kMusicList) context.store.entries().append(info.row, std::array{track});
  }
  batch.commit();
  return track;
}

}  // namespace

namespace libraryAdding {

ScriptValue add(KeeperContext &context, const ScriptValue &value, const PlaylistObject *playlist) {
  const QStringList files = filesOf(value);
  TrackRows tracks;
  for (const QString &file : files) {
    const TrackRow track = addFile(context, file);
    if (track != TrackRow::None) tracks.push_back(track);
  }
  ScriptObjects objects;
  if (playlist) {
    for (const PlaylistEntry &entry : context.store.entries().append(playlist->playlist(), tracks)) {
      objects.push_back(
          std::make_shared<TrackObject>(context, entry.track, playlist->playlist(), entry.position));
    }
  } else {
    const PlaylistRow library = context.store.playlists().master();
    for (const TrackRow track : tracks)
      objects.push_back(std::make_shared<TrackObject>(context, track, library));
  }
  const bool isOneFile = !value.is(ScriptValue::Type::List) && files.size() == 1;
  if (isOneFile) return objects.empty() ? ScriptValue::missing() : ScriptValue(objects.front());
  return ScriptValue::list(ScriptListItems(objects.begin(), objects.end()));
}

}  // namespace libraryAdding
