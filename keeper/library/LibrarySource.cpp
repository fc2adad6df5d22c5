#include "keeper/library/LibrarySource.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "app/library/PropertyListReader.h"
#include "platform/HeapRoom.h"
#include "platform/Platform.h"
#include "support/BMLog.h"
#include "values/Keys.h"

namespace {

qsizetype tracksIn(const Value &root) {
  return root.toDictionary().value(keys::Tracks).toDictionary().size();
}

/// Each track has its number under this key once, and each item of a playlist once; so the text names at
/// least this many tracks less the items.
qsizetype itemsIn(const Value &root) {
  qsizetype items = 0;
  for (const Value &playlist : root.toDictionary().value(keys::Playlists).toArray()) {
    items += playlist.toDictionary().value(keys::PlaylistItems).toArray().size();
  }
  return items;
}

qsizetype numbersNamed(QByteArrayView bytes) {
  static const QByteArray mark = QByteArrayLiteral("<key>Track ID</key>");
  qsizetype count = 0;
  for (qsizetype at = bytes.indexOf(mark); at >= 0; at = bytes.indexOf(mark, at + mark.size())) ++count;
  return count;
}

Value readBytes(QByteArrayView bytes, QString *error, QString *damage) {
  using namespace BMUtility;
  PropertyListCounts counts;
  const Value first = mutablePropertyListFromDataTrySystemFirstErrorDescription(bytes, true, error, &counts);
  const qsizetype named = numbersNamed(bytes);
  if (counts.isManual) {
    *damage = QStringLiteral("it is no sound property list, and numbers of more than 32 bits may be lost");
  }
  if (counts.isManual || tracksIn(first) + itemsIn(first) >= named) return first;
  QString ownError;
  const Value own = mutablePropertyListFromDataTrySystemFirstErrorDescription(bytes, false, &ownError);
  const qsizetype kept = tracksIn(first) + itemsIn(first);
  const qsizetype ownKept = tracksIn(own) + itemsIn(own);
  BMLog("[import] the parsers disagree: %ld named, the system's kept %ld, ours %ld", named, kept, ownKept);
  return ownKept > kept ? own : first;
}

bool isLibraryFile(const QString &path) {
  if (QFileInfo(path).fileName().startsWith(QStringLiteral("iTunes "))) return true;
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly) || file.size() == 0) return false;
  const uchar *bytes = file.map(0, file.size());
  return bytes && QByteArrayView(bytes, file.size()).contains(QByteArrayView("<key>Music Folder</key>"));
}

}  // namespace

LibrarySource readLibrarySource(const QString &path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) {
    return {{}, QStringLiteral("cannot read %1: %2").arg(path, file.errorString()), {}};
  }
  const qint64 size = file.size();
  const uchar *mapped = size > 0 ? file.map(0, size) : nullptr;
  const QByteArray copied = mapped ? QByteArray() : file.readAll();
  makeHeapRoom(size * 2);
  QString error, damage;
  const Value root =
      readBytes(mapped ? QByteArrayView(mapped, size) : QByteArrayView(copied), &error, &damage);
  // What was read before the damage is worth more than nothing.
  if (!error.isEmpty()) damage = error;
  if (!damage.isEmpty()) BMLog("[import] %@ is damaged: %@", path, damage);
  const Dictionary &library = root.toDictionary();
  const bool isLibrary = library.value(keys::Tracks).type() == Value::Type::Dictionary;
  if (isLibrary && (error.isEmpty() || tracksIn(root) > 0)) return {library, {}, damage};
  const QString why = error.isEmpty() ? QStringLiteral("it holds no library") : error;
  return {{}, QStringLiteral("cannot import %1: %2").arg(path, why), {}};
}

QString newestLibraryFile() {
  const Folders &folders = platform().folders;
  QStringList places{folders.home + QStringLiteral("/Music/iTunes"),
                     folders.music + QStringLiteral("/iTunes"),
                     folders.home + QStringLiteral("/Documents/iTunes"),
                     folders.home + QStringLiteral("/Music/Music"), folders.music + QStringLiteral("/Music")};
  places.removeDuplicates();
  QString best;
  QDateTime date;
  for (const QString &folder : places) {
    for (const QFileInfo &file : QDir(folder).entryInfoList(QDir::Files | QDir::Hidden, QDir::Name)) {
      const bool isNewer = best.isEmpty() || file.lastModified() > date;
      if (file.suffix().toLower() != QStringLiteral("xml") || !isNewer) continue;
      if (!isLibraryFile(file.filePath())) continue;
      best = file.filePath();
      date = file.lastModified();
    }
  }
  return best;
}
