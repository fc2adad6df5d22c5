#pragma once

#include <QHash>
#include <QString>
#include <atomic>
#include <mutex>
#include <optional>

#include "platform/MainLoop.h"
#include "support/TaskGuard.h"
#include "values/Value.h"

/// Remembers on disk a small dictionary of tag facts for each audio file, one cache file a folder of songs,
/// written one at a time by a short timer on the main thread. A failure costs only a miss.
class SongFileInfoCache {
 public:
  /// The one cache, in the user's cache folder, made at first use. Any thread.
  static SongFileInfoCache &sharedCache();
  /// The user's folder for what can be made anew.
  static QString appCacheFolder();
  /// Forgets the one cache after writing it, for a fresh start.
  static void resetSharedCache();
  /// A cache below a folder.
  explicit SongFileInfoCache(const QString &basePath);
  SongFileInfoCache(const SongFileInfoCache &) = delete;
  /// Writes what is to be written.
  ~SongFileInfoCache();

  /// What is remembered of a file that has not changed since; null otherwise. Any thread.
  Dictionary infoForSongFileAtPath(const QString &path);
  /// Any thread.
  void storeInfoForSongFileAtPath(const Dictionary &info, const QString &path);
  void setAllowDiskReads(bool allow) { mAllowDiskReads = allow; }
  bool isDirty();
  /// Writes everything, on the calling thread.
  void detach();

  /// The number by which a song's folder is known; nothing for a folder of fewer than 5 characters.
  static std::optional<quint32> keyNumberForPath(const QString &path);
  QString pathForKeyNumber(quint32 number) const;

 private:
  Dictionary hostDictionaryForPathKey(const QString &path, QString *key);
  void cacheMemoryDirtyWithResetTime(bool reset);
  void writeSomeCacheToDisk();
  bool writeOneFile();

  QString mCacheBasePath;
  std::mutex mDirtyDictsLock;
  // Guarded by the lock, with the dictionaries inside.
  QHash<QString, Dictionary> mMemoryCache;
  QHash<QString, Dictionary> mDirtyDicts;
  // Main thread only.
  MainLoop::TimerID mMemoryCacheWriteTimer = 0;
  double mLastDirtiedTime = 0;
  std::atomic<bool> mAllowDiskReads{true};
  TaskGuard tasks;
};
