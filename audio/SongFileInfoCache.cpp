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

QString appCacheFolder() {
  const Folders &folders = platform().folders;
  return folders.caches.isEmpty() ? folders.home + QStringLiteral("/Library/Caches") : folders.caches;
}

/// A file's folder, without a slash at its end.
QString folderOf(const QString &path) {
  const qsizetype slash = path.lastIndexOf(u'/');
  return slash <= 0 ? QString() : path.left(slash);
}

}  // namespace

SongFileInfoCache &SongFileInfoCache::sharedCache() {
  if (!theCache) {
    const QString base = QStringLiteral("%1/%2.info").arg(appCacheFolder(), platform().bundle.identifier);
    createMissingDirectories(base);
    theCache = new SongFileInfoCache(base);
  }
  return *theCache;
}

void SongFileInfoCache::resetSharedCache() {
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
      host = archived.toDictionary();
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
  const Dictionary info = hostDictionaryForPathKey(path, &key).value(Key(path)).toDictionary();
  const std::optional<Date> date = platform().fileFacts->modificationDate(path);
  const Date *known = info.value(cachedinfo::modified).toDate();
  return date && known && date->seconds == known->seconds ? info : Dictionary();
}

void SongFileInfoCache::storeInfoForSongFileAtPath(const Dictionary &info, const QString &path) {
  if (info.isNull() || path.isNull()) {
    BMLog("nil storeInfo for %@", path);
    return;
  }
  {
    std::lock_guard held(mDirtyDictsLock);
    QString key;
    const Dictionary host = hostDictionaryForPathKey(path, &key);
    if (host.isNull()) return;
    host.set(Key(path), info);
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
      platform().mainLoop->startTimer(kPauseSeconds, false, [this] { writeSomeCacheToDisk(true); });
}

void SongFileInfoCache::writeSomeCacheToDisk(bool byTimer) {
  if (byTimer) {
    mMemoryCacheWriteTimer = 0;
    const auto quiet = float(platform().clock->now().seconds - mLastDirtiedTime);
    if (quiet < float(kPauseSeconds)) return cacheMemoryDirtyWithResetTime(true);
  }
  std::lock_guard held(mDirtyDictsLock);
  if (mDirtyDicts.isEmpty()) return;
  const QString key = mDirtyDicts.keyBegin().base().key();
  const QString path = pathForKeyNumber(key.toUInt(nullptr, 16));
  if (!createMissingDirectories(QFileInfo(path).path())) return;
  QString error;
  const Dictionary host = mDirtyDicts.take(key);
  const QByteArray bytes = platform().propertyLists->write(host, SystemPropertyList::Format::Binary, &error);
  if (bytes.isEmpty() || !writeFileAtomically(path, bytes, false, &error)) {
    BMLog("writeSomeCacheToDisk couldn't serialize <%@ %p> to %@:\r\nerr:%@ Exception: %@",
          QStringLiteral("Dictionary"), host.identity(), path, error, QString());
  }
  if (byTimer && !mDirtyDicts.isEmpty()) cacheMemoryDirtyWithResetTime(false);
}

void SongFileInfoCache::detach() {
  // A folder that cannot be made would keep its entries waiting for ever.
  for (qsizetype left = -1; left != mDirtyDicts.size() && isDirty();) {
    left = mDirtyDicts.size();
    writeSomeCacheToDisk(false);
  }
}
