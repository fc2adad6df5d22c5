#pragma once

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QVariant>
#include <functional>
#include <memory>
#include <unordered_map>
#include <vector>

#include "keeper/library/StoreError.h"
#include "platform/keeper/RecordKeys.h"
#include "values/Value.h"

/// The connection to a store's file: prepared statements that are kept, transactions, the numbers of keys and
/// the counter of changes. Operations throw `StoreError` unless they say otherwise. One thread.
class StoreDatabase {
 public:
  /// How much of the file is held in memory as a rule.
  static constexpr int kCacheKilobytes = 16384;

  StoreDatabase() = default;
  ~StoreDatabase() { close(); }
  StoreDatabase(const StoreDatabase &) = delete;
  StoreDatabase &operator=(const StoreDatabase &) = delete;

  /// Connects to a file, which is made if it may be written. Looks at no content but what is needed to say
  /// that the file is none of ours.
  void connect(const QString &file, bool isReadOnly);
  void close();
  bool isOpen() const { return connection.isOpen(); }
  const QString &path() const { return file; }
  bool isReadOnly() const { return readOnly; }

  /// Runs a statement without a result that is not worth keeping.
  void execute(const QString &sql);
  /// The first column of a statement's first row.
  QVariant answer(const QString &sql);

  /// Brackets a transaction; inner pairs only count. See `StoreBatch`. The first of all finds no tables yet.
  void begin(bool isFirstOfAll = false);
  void commit();
  void rollBack();
  bool isInTransaction() const { return depth > 0; }
  /// Says that the running transaction changes the library, not only notes about it.
  void markChanged() { hasChanged = true; }

  /// How many transactions have been committed through this object.
  quint64 commitCount() const { return commits; }

  qint64 changeStamp() const { return stamp; }
  /// Takes in what other connections have done; true if there was anything.
  bool refresh();
  /// Calls `action` whenever what was read before may no longer hold.
  void onForget(std::function<void()> action) { forgetters.push_back(std::move(action)); }

  /// A fresh number for "Track ID" or "Playlist ID"; never given twice. Within a transaction.
  qint64 takeNumber();
  /// Makes sure that fresh numbers are above this one.
  void raiseNumber(qint64 used);

  QByteArray fact(const QString &name);
  void setFact(const QString &name, const QByteArray &bytes);

  RecordKeys keys;

 private:
  friend class StoreStatement;
  friend class StoreSnapshot;
  using Pool = std::vector<std::unique_ptr<QSqlQuery>>;

  void loadState();
  void forgetAll();
  void storeState();
  void touchFile() const;
  [[noreturn]] void fail(const QSqlError &error, const QString &doing) const;

  QSqlDatabase connection;
  QString connectionName;
  QString file;
  bool readOnly = false;
  std::unordered_map<QString, Pool> statements;
  std::vector<std::function<void()>> forgetters;
  int depth = 0;
  bool hasChanged = false;
  bool isBroken = false;
  quint64 commits = 0;
  qint64 stamp = 0;
  qint64 lastNumber = 0;
  qint64 dataVersion = -1;
};
