#include "app/library/LibraryFile.h"

#include <QFileInfo>
#include <QScopeGuard>
#include <QUtf8StringView>
#include <algorithm>

#include "app/library/LibraryLocation.h"
#include "app/library/MappedFile.h"
#include "app/library/PropertyListReader.h"
#include "platform/Platform.h"
#include "support/BMLog.h"
#include "support/Preferences.h"
#include "values/Keys.h"

namespace {

/// The library file read last.
struct LibraryCache {
  std::optional<Date> date;
  Dictionary library;
  QString folder;
  QString persistentID;
};

LibraryCache &cache() {
  static LibraryCache state;
  return state;
}

/// Parses with the settings naming the other parser meanwhile.
Value parseGuarded(QByteArrayView bytes, QString *error) {
  const bool manualFirst = prefs::isTrue(prefs::noSystemDeserialize);
  prefs::set(prefs::noSystemDeserialize, !manualFirst);
  prefs::synchronize();
  // An exception is no crash: the parser keeps its turn.
  const auto restore = qScopeGuard([manualFirst] {
    prefs::set(prefs::noSystemDeserialize, manualFirst);
    prefs::synchronize();
  });
  return BMUtility::mutablePropertyListFromDataTrySystemFirstErrorDescription(bytes, !manualFirst, error);
}

bool isUtf8(QByteArrayView bytes) {
  return QUtf8StringView(bytes).isValidUtf8();
}

bool isAscii(QByteArrayView bytes) {
  return std::all_of(bytes.begin(), bytes.end(), [](char byte) { return quint8(byte) < 0x80; });
}

/// "00" to "15" for a hexadecimal digit in upper case; null for any other character.
QString decimalOfDigit(QChar digit) {
  const qsizetype number = QStringView(u"0123456789ABCDEF").indexOf(digit);
  return number < 0 ? QString() : QStringLiteral("%1").arg(number, 2, 10, QChar(u'0'));
}

/// A place found, or the end.
qsizetype endOr(qsizetype found, QByteArrayView bytes) {
  return found < 0 ? bytes.size() : found;
}

}  // namespace

namespace iTunesInterface {

Dictionary getMusicLibraryDictionaryWithError(QString *error) {
  QString directError;
  const Dictionary direct = iTunesLibInterface::getMusicLibraryDictionaryWithError(&directError);
  if (!directError.isEmpty()) BMLog("iTunesLib getMusic...: %@", directError);
  if (!direct.isNull()) return direct;
  const QString path = mostRecentMusicLibraryPath(nullptr);
  if (!path.isEmpty()) return getMusicLibraryDictionaryAtPathWithError(path, error);
  *error = QStringLiteral("Can't find library XML");
  return {};
}

Dictionary getMusicLibraryDictionaryAtPathWithError(const QString &path, QString *error) {
  const std::optional<Date> date = platform().fileFacts->modificationDate(path);
  if (cache().date && date == cache().date && !cache().library.isNull()) return cache().library;
  MappedFile file;
  if (!file.open(path, error)) return {};
  const Value root = parseGuarded(file.bytes(), error);
  const Dictionary library = root.toDictionary();
  if (!library.contains(keys::Tracks)) {
    // Not kept: the same file is as wrong at the next load.
    if (error->isEmpty()) *error = QStringLiteral("%1 holds no music library").arg(path);
    return {};
  }
  cache() = {date, library, QFileInfo(path).path(), library.value(keys::LibraryPersistentID).toText()};
  return library;
}

QString musicLibraryPath() {
  return cache().folder;
}

QString musicLibraryPersistentID() {
  return cache().persistentID;
}

QString pathToExternalArtForIDLocal(const QString &id, bool local) {
  constexpr qsizetype kShortest = 10;
  const QString library = musicLibraryPersistentID(), folder = musicLibraryPath();
  if (id.size() < kShortest || library.isEmpty() || folder.isEmpty()) return {};
  const auto fromEnd = [&id](qsizetype place) { return decimalOfDigit(id[id.size() - place]); };
  return QStringList{
      folder,     u"Album Artwork"_qs, local ? u"Local"_qs : u"Download"_qs, library, fromEnd(1),
      fromEnd(2), fromEnd(3),          library + u'-' + id + u".itc"_qs}
      .join(u'/');
}

QString validateXMLAtPath(const QString &path) {
  QString problems;
  MappedFile file;
  if (!file.open(path, &problems)) return problems;
  if (!platform().propertyLists->parse(file.bytes(), &problems).isNull() && problems.isEmpty()) return {};
  const QByteArrayView bytes = file.bytes();
  if (!isUtf8(bytes)) problems += QStringLiteral("\nThe file is not UTF-8 text");
  for (qsizetype place = 0; place < bytes.size();) {
    const qsizetype tag = endOr(bytes.indexOf('<', place), bytes);
    const qsizetype behind = qMin(endOr(bytes.indexOf('>', tag), bytes) + 1, bytes.size());
    if (!isUtf8(bytes.sliced(place, tag - place))) {
      problems += QStringLiteral("\n -- Non-UTF8 value at offset %1").arg(place);
    }
    if (!isAscii(bytes.sliced(tag, behind - tag))) {
      problems += QStringLiteral("\n -- Non-ASCII tag at offset %1").arg(tag);
    }
    place = behind;
  }
  return problems;
}

void resetLibraryCache() {
  cache() = {};
}

}  // namespace iTunesInterface
