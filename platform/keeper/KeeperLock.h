#pragma once

#include <QString>
#include <optional>

/// The lock file of the one keeper that may serve a user. The system frees it when its process ends, however
/// that comes about. One thread.
class KeeperLock {
 public:
  explicit KeeperLock(const QString &file) : path(file) {}
  KeeperLock(const KeeperLock &) = delete;
  /// Frees it if it is held here.
  ~KeeperLock();

  enum class Taken { Yes, HeldByOther, Failed };
  /// Takes the lock and writes this process' number into the file, without waiting. With `error` why it
  /// failed.
  [[nodiscard]] Taken take(QString *error);

  /// The process that holds a lock; nothing if nobody does. Looks only: never in anybody's way. 0 stands for
  /// a holder that has not written its number yet.
  static std::optional<qint64> holder(const QString &path);

 private:
  const QString path;
  int handle = -1;
};
