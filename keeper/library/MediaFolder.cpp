#include "keeper/library/MediaFolder.h"

#include <QFileInfo>

#include "keeper/library/FilePlacing.h"
#include "keeper/library/KeyEdits.h"
#include "keeper/library/TrackTable.h"
#include "platform/FileAddress.h"
#include "values/Keys.h"

namespace {

/// How many names are tried where others are taken.
constexpr int kTries = 1000;

/// Where artists' folders lie: newer media folders hold music in a folder of its own.
QString musicFolder(LibraryStore &store) {
  const QString folder = mediaFolder::path(store);
  const QString inside = folder + u"/Music"_qs;
  return QFileInfo(inside).isDir() || !QFileInfo::exists(folder) ? inside : folder;
}

/// "03 Name.mp3", "03 Name 1.mp3", "03 Name 2.mp3" …
QString numbered(const QString &path, int number) {
  if (number == 0) return path;
  const qsizetype dot = path.lastIndexOf(u'.');
  return path.left(dot) + u' ' + QString::number(number) + path.mid(dot);
}

QString twoDigits(qint64 number) {
  return QString::number(number).rightJustified(2, u'0');
}

QString orUnknown(const QString &name, const QString &unknown) {
  const QString clean = mediaFolder::cleaned(name);
  return clean.isEmpty() ? unknown : clean;
}

struct NewName {
  /// Empty with an error.
  QString path;
  /// The file has its old name as well.
  bool isSecond = false;
};

NewName nameAnew(const QString &file, const QString &wanted, QString *error) {
  for (int number = 0; number < kTries; ++number) {
    const QString target = numbered(wanted, number);
    if (target == file) return {file};
    // One name in other capitals, on a disk that does not tell them apart.
    if (target.compare(file, Qt::CaseInsensitive) == 0 && filePlacing::isSameFile(file, target)) {
      if (QFile::rename(file, target)) return {target};
      *error = u"%1: cannot be renamed"_qs.arg(file);
      return {};
    }
    const filePlacing::Outcome outcome = filePlacing::addName(file, target, error);
    if (outcome == filePlacing::Outcome::Placed) return {target, true};
    if (outcome == filePlacing::Outcome::Failed) return {};
  }
  *error = u"%1: all names are taken"_qs.arg(wanted);
  return {};
}

}  // namespace

namespace mediaFolder {

QString path(LibraryStore &store) {
  const Dictionary root = store.root();
  for (const Key key : {keys::MusicFolder, keys::MediaFolder}) {
    const QString folder = pathOfFileAddress(root.value(key).toText());
    if (!folder.isEmpty()) return folder;
  }
  return store.folder() + u"/iTunes Media"_qs;
}

QString cleaned(const QString &name) {
  constexpr qsizetype kLongest = 200;
  QString clean = name.trimmed();
  for (QChar &sign : clean) {
    if (sign < u' ' || sign == u'\x7f' || u"/\\:*?\"<>|"_qs.contains(sign)) sign = u'_';
  }
  // A point ahead hides a file; a point or a blank at the end is cut by some systems.
  if (clean.startsWith(u'.')) clean[0] = u'_';
  while (clean.toUtf8().size() > kLongest) clean.chop(clean.back().isLowSurrogate() ? 2 : 1);
  clean = clean.trimmed();
  if (clean.endsWith(u'.')) clean.back() = u'_';
  return clean;
}

QString placeOf(const Dictionary &record, const QString &extension) {
  const auto text = [&record](Key key) { return record.value(key).toText(); };
  QString artist = text(keys::AlbumArtist);
  if (artist.isEmpty()) artist = text(keys::Artist);
  const bool isCompilation = record.value(keys::Compilation).toBool() && text(keys::AlbumArtist).isEmpty();
  QString folder = isCompilation ? u"Compilations"_qs : orUnknown(artist, u"Unknown Artist"_qs);
  folder += u'/' + orUnknown(text(keys::Album), u"Unknown Album"_qs) + u'/';
  const qint64 number = record.value(keys::TrackNumber).toInteger();
  QString prefix;
  if (record.value(keys::DiscCount).toInteger() > 1 && record.value(keys::DiscNumber).toInteger() > 0) {
    prefix = QString::number(record.value(keys::DiscNumber).toInteger()) + u'-';
  }
  if (number > 0) prefix += twoDigits(number);
  if (!prefix.isEmpty()) prefix += u' ';
  return folder + cleaned(prefix + orUnknown(text(keys::Name), u"Unknown Title"_qs)) + u'.' + extension;
}

QString copyInto(LibraryStore &store, const QString &file, const Dictionary &record, QString *error) {
  const QString place = musicFolder(store) + u'/' + placeOf(record, QFileInfo(file).suffix());
  for (int number = 0; number < kTries; ++number) {
    const QString target = numbered(place, number);
    if (target == file) return file;
    const filePlacing::Outcome outcome = filePlacing::copy(file, target, error);
    if (outcome == filePlacing::Outcome::Placed) return target;
    if (outcome == filePlacing::Outcome::Failed) return {};
  }
  *error = u"%1: all names are taken"_qs.arg(place);
  return {};
}

QString organise(LibraryStore &store, TrackRow track) {
  const Dictionary record = store.tracks().record(track);
  const QString file = pathOfFileAddress(record.value(keys::Location).toText());
  const QString top = path(store);
  if (file.isEmpty() || !file.startsWith(top + u'/') || !QFileInfo(file).isFile()) return {};
  const QString wanted = musicFolder(store) + u'/' + placeOf(record, QFileInfo(file).suffix());
  QString error;
  const NewName placed = nameAnew(file, wanted, &error);
  if (placed.path.isEmpty() || placed.path == file) return error;
  try {
    store.tracks().set(track, {keyEdits::setText(keys::Location, fileAddressOfPath(placed.path))});
  } catch (const StoreError &problem) {
    const bool isBack = placed.isSecond ? QFile::remove(placed.path) : QFile::rename(placed.path, file);
    return isBack ? problem.message : u"%1: %2"_qs.arg(placed.path, problem.message);
  }
  if (placed.isSecond) QFile::remove(file);
  filePlacing::removeEmptyFolders(QFileInfo(file).path(), top);
  return {};
}

}  // namespace mediaFolder
