#include "audio/SongFileInfoCache.h"

#include <QFile>
#include <QFileInfo>
#include <utility>

#include "audio/CachedInfoKeys.h"
#include "platform/AtomicFile.h"
#include "platform/Platform.h"
#include "support/BMLog.h"
#include "support/Paths.h"

namespace {

/// So long after the last change the first file is written, and so long after it the next.
constexpr double kPauseSeconds = 0.1;

/// Ended by `resetSharedCache` alone: at the very end of the process there is no platform to write with.
SongFileInfoCache *theCache = nullptr;
std::mutex theCacheLock;

/// A host dictionary with the dates of its entries made otherwise.
template <class Change>
Dictionary withDates(const Dictionary &host, Change change) {
  const Dictionary changed = Dictionary::make();
  for (const DictionaryEntry &entry : host) {
    if (entry.value.toDictionary().isNull()) continue;
    const Dictionary info = entry.value.toDictionary().copyMembers(true);
    info.set(cachedinfo::modified, change(info.value(cachedinfo::modified)));
    changed.set(entry.key, info);
  }
  return changed;
}

// A property list's date ends at microseconds, a file's goes further, and both must be the same to the last
// digit: the archive holds plain numbers.
Value numberOfDate(const Value &date) {
  return date.toDate() ? Value(date.toDate()->seconds) : Value();
}

Value dateOfNumber(const Value &number) {
  return number.isNumber() ? Value(Date{number.toDouble()}) : Value();
}

/// A file's folder, without a slash at its end.
QString folderOf(const QString &path) {
  const qsizetype slash = path.lastIndexOf(u'/');
  return slash <= 0 ? QString() : path.left(slash);
}

}  // namespace

QString SongFileInfoCache::appCacheFolder() {
  const Folders &folders = platform().folders;
  return folders.caches.isEmpty() ? folders.home + QStringLiteral("/Library/Caches") : folders.caches;
}

SongFileInfoCache &SongFileInfoCache::sharedCache() {
  std::lock_guard held(theCacheLock);
  if (!theCache) {
    const QString base = QStringLiteral("%1/%2.info").arg(appCacheFolder(), platform().bundle.identifier);
    createMissingDirectories(base);
    theCache = new SongFileInfoCache(base);
  }
  return *theCache;
}

void SongFileInfoCache::resetSharedCache() {
  std::lock_guard held(theCacheLock);
  delete std::exchange(theCache, nullptr);
}

SongFileInfoCache::SongFileInfoCache(const QString &basePath)
    : mCacheBasePath(basePath), mLastDirtiedTime(platform().clock->now().seconds) {}

SongFileInfoCache::~SongFileInfoCache() {
  platform().mainLoop->stopTimer(mMemoryCacheWriteTimer);
  detach();
}

std::optional<quint32> SongFileInfoCache::keyNumberForPath(const QString &path) {
  constexpr qsizetype kShortest = 5;
  const QString folder = folderOf(path);
  if (folder.size() < kShortest) return std::nullopt;
  quint32 number = 0;
  for (const QChar unit : QStringView(folder).last(4)) number = (number << 7) + unit.unicode();
  return number;
}

QString SongFileInfoCache::pathForKeyNumber(quint32 number) const {
  const auto part = [](quint32 bits) { return QStringLiteral("%1").arg(bits & 15, 2, 10, QChar(u'0')); };
  return QStringLiteral("%1/%2/%3/%4.cache")
      .arg(mCacheBasePath, part(number >> 4), part(number), QString::number(number, 16));
}

Dictionary SongFileInfoCache::hostDictionaryForPathKey(const QString &path, QString *key) {
  const std::optional<quint32> number = keyNumberForPath(path);
  if (!number) return {};
  *key = QString::number(*number, 16);
  const auto known = mMemoryCache.constFind(*key);
  if (known != mMemoryCache.constEnd()) return *known;
  if (!mAllowDiskReads) return {};
  Dictionary host = Dictionary::make();
  QFile file(pathForKeyNumber(*number));
  if (file.open(QIODevice::ReadOnly)) {
    QString error;
    const Value archived = platform().propertyLists->parse(file.readAll(), &error);
    if (archived.type() == Value::Type::Dictionary) {
      host = withDates(archived.toDictionary(), dateOfNumber);
    } else {
      BMLog("Couldn't unarchive %@", file.fileName());
    }
  }
  mMemoryCache.insert(*key, host);
  return host;
}

Dictionary SongFileInfoCache::infoForSongFileAtPath(const QString &path) {
  std::lock_guard held(mDirtyDictsLock);
  QString key;
  // A path that nobody stored is not made a key: keys live as long as the process.
  const Dictionary host = hostDictionaryForPathKey(path, &key);
  const Key known = Key::find(path);
  const Dictionary info = known.isAbsent() ? Dictionary() : host.value(known).toDictionary();
  const std::optional<Date> date = platform().fileFacts->modificationDate(path);
  const Date *then = info.value(cachedinfo::modified).toDate();
  return date && then && date->seconds == then->seconds ? info : Dictionary();
}

void SongFileInfoCache::storeInfoForSongFileAtPath(const Dictionary &info, const QString &path) {
  if (info.isNull() || path.isNull()) {
    BMLog("nil storeInfo for %@", path);
    return;
  }
  // A copy of its own, for good: what the caller does to his must not meet the archiving.
  const Dictionary kept = copyTree(info).toDictionary();
  kept.freeze();
  {
    std::lock_guard held(mDirtyDictsLock);
    QString key;
    const Dictionary host = hostDictionaryForPathKey(path, &key);
    if (host.isNull()) return;
    host.set(Key(path), kept);
    mDirtyDicts.insert(key, host);
  }
  cacheMemoryDirtyWithResetTime(true);
}

bool SongFileInfoCache::isDirty() {
  std::lock_guard held(mDirtyDictsLock);
  return !mDirtyDicts.isEmpty();
}

void SongFileInfoCache::cacheMemoryDirtyWithResetTime(bool reset) {
  if (!platform().mainLoop->isMainThread()) {
    platform().mainLoop->post(tasks.guarded([this, reset] { cacheMemoryDirtyWithResetTime(reset); }));
    return;
  }
  if (reset) mLastDirtiedTime = platform().clock->now().seconds;
  if (mMemoryCacheWriteTimer != 0) return;
  mMemoryCacheWriteTimer =
      platform().mainLoop->startTimer(kPauseSeconds, false, [this] { writeSomeCacheToDisk(); });
}

void SongFileInfoCache::writeSomeCacheToDisk() {
  mMemoryCacheWriteTimer = 0;
  const auto quiet = float(platform().clock->now().seconds - mLastDirtiedTime);
  if (quiet < float(kPauseSeconds)) {
    cacheMemoryDirtyWithResetTime(true);
  } else if (writeOneFile() && isDirty()) {
    cacheMemoryDirtyWithResetTime(false);
  }
}

/// Writes what waits for one file. False if nothing waits or its folder cannot be made; it waits on then.
bool SongFileInfoCache::writeOneFile() {
  std::lock_guard held(mDirtyDictsLock);
  if (mDirtyDicts.isEmpty()) return false;
  const QString key = mDirtyDicts.constBegin().key();
  const QString path = pathForKeyNumber(key.toUInt(nullptr, 16));
  if (!createMissingDirectories(QFileInfo(path).path())) return false;
  QString error;
  const Dictionary host = mDirtyDicts.take(key);
  const QByteArray bytes = platform().propertyLists->write(withDates(host, numberOfDate),
                                                           SystemPropertyList::Format::Binary, &error);
  if (bytes.isEmpty() || !writeFileAtomically(path, bytes, false, &error)) {
    BMLog("writeSomeCacheToDisk couldn't serialize <%@ %p> to %@:\r\nerr:%@ Exception: %@",
          QStringLiteral("Dictionary"), host.identity(), path, error, QString());
  }
  return true;
}

void SongFileInfoCache::detach() {
  while (writeOneFile()) {
  }
}
