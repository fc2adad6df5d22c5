#include "keeper/library/StoreDatabase.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <QFile>
#include <QSqlError>
#include <atomic>

#include "keeper/library/StoreStatement.h"
#include "platform/keeper/StoreSchema.h"
#include "support/BMLog.h"

namespace {

const QString kFactNumber = QStringLiteral("last number");

/// SQLite's own numbers, as the driver gives them.
QString reasonOf(const QSqlError &error) {
  switch (error.nativeErrorCode().toInt() & 0xFF) {
    case 5:
    case 6:
      return QStringLiteral("another program is writing it");
    case 8:
      return QStringLiteral("it cannot be written here");
    case 11:
      return QStringLiteral("it is damaged");
    case 13:
      return QStringLiteral("the disk is full");
    case 14:
      return QStringLiteral("the file or its folder cannot be opened for writing");
    case 26:
      return QStringLiteral("it is no library of Music Keeper");
    default:
      return error.databaseText().isEmpty() ? error.text() : error.databaseText();
  }
}

}  // namespace

void StoreDatabase::fail(const QSqlError &error, const QString &doing) const {
  const QString line = QStringLiteral("cannot %1 the library %2: %3").arg(doing, file, reasonOf(error));
  BMLog("[store] %@ (%@)", line, error.text());
  throw StoreError{line};
}

void StoreDatabase::connect(const QString &path_, bool isReadOnly_) {
  static std::atomic<int> counter = 0;
  close();
  file = path_;
  readOnly = isReadOnly_;
  connectionName = QStringLiteral("store %1").arg(++counter);
  connection = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connectionName);
  connection.setDatabaseName(file);
  connection.setConnectOptions(readOnly ? QStringLiteral("QSQLITE_OPEN_READONLY;QSQLITE_BUSY_TIMEOUT=5000")
                                        : QStringLiteral("QSQLITE_BUSY_TIMEOUT=5000"));
  if (!connection.open()) fail(connection.lastError(), QStringLiteral("open"));
}

void StoreDatabase::close() {
  if (connectionName.isEmpty()) return;
  if (depth > 0) {
    depth = 1;
    rollBack();
  }
  forgetAll();
  statements.clear();
  keys.clear();
  connection.close();
  connection = QSqlDatabase();
  QSqlDatabase::removeDatabase(std::exchange(connectionName, {}));
  dataVersion = -1;
}

void StoreDatabase::execute(const QString &sql) {
  QSqlQuery query(connection);
  if (!query.exec(sql)) fail(query.lastError(), readOnly ? QStringLiteral("read") : QStringLiteral("write"));
}

QVariant StoreDatabase::answer(const QString &sql) {
  StoreStatement statement(*this, sql);
  statement.run();
  return statement.next() ? statement.value(0) : QVariant();
}

void StoreDatabase::begin(bool isFirstOfAll) {
  if (depth == 0) {
    StoreStatement(*this, QStringLiteral("BEGIN IMMEDIATE")).run();
    hasChanged = false;
    isBroken = false;
    depth = 1;
    // What is held in memory must be what the transaction builds on.
    try {
      if (!isFirstOfAll) refresh();
    } catch (const StoreError &) {
      rollBack();
      throw;
    }
    return;
  }
  ++depth;
}

void StoreDatabase::commit() {
  if (depth > 1) {
    --depth;
    return;
  }
  if (isBroken) {
    rollBack();
    throw StoreError{QStringLiteral("cannot write the library %1: a part of the change failed").arg(file)};
  }
  try {
    storeState();
    StoreStatement(*this, QStringLiteral("COMMIT")).run();
  } catch (const StoreError &) {
    rollBack();
    throw;
  }
  depth = 0;
  ++commits;
  touchFile();
}

void StoreDatabase::rollBack() {
  if (depth > 1) {
    isBroken = true;
    --depth;
    return;
  }
  depth = 0;
  // After some failures the database has already done it by itself; then this fails, as it may.
  QSqlQuery(connection).exec(QStringLiteral("ROLLBACK"));
  forgetAll();
  dataVersion = -1;
}

void StoreDatabase::storeState() {
  for (quint32 number = keys.stored(); number < keys.size(); ++number) {
    StoreStatement(*this, QStringLiteral("INSERT INTO keys (number, text) VALUES (?, ?)"))
        .bind(number)
        .bind(keys.key(number).text())
        .run();
  }
  if (hasChanged) {
    StoreStatement(*this, QStringLiteral("REPLACE INTO facts (name, value) VALUES (?, ?)"))
        .bind(storeSchema::kFactChangeStamp)
        .bind(++stamp)
        .run();
  }
  keys.setStored(keys.size());
}

/// Readers wait for the file's date to move, and a commit only writes the log beside it.
void StoreDatabase::touchFile() const {
  ::utimensat(AT_FDCWD, QFile::encodeName(file).constData(), nullptr, 0);
}

bool StoreDatabase::refresh() {
  const qint64 now = answer(QStringLiteral("PRAGMA data_version")).toLongLong();
  if (now == dataVersion) return false;
  dataVersion = now;
  forgetAll();
  loadState();
  return true;
}

void StoreDatabase::loadState() {
  keys.clear();
  StoreStatement listed(*this, storeSchema::kReadKeys);
  listed.run();
  while (listed.next()) keys.load(quint32(listed.integer(0)), listed.text(1));
  StoreStatement numbers(*this, storeSchema::kReadFact);
  stamp = numbers.bind(storeSchema::kFactChangeStamp).run().next() ? numbers.integer(0) : 0;
  lastNumber = numbers.bind(kFactNumber).run().next() ? numbers.integer(0) : 0;
}

void StoreDatabase::forgetAll() {
  for (const auto &forget : forgetters) forget();
}

qint64 StoreDatabase::takeNumber() {
  raiseNumber(lastNumber + 1);
  return lastNumber;
}

void StoreDatabase::raiseNumber(qint64 used) {
  if (used <= lastNumber) return;
  StoreStatement(*this, QStringLiteral("REPLACE INTO facts (name, value) VALUES (?, ?)"))
      .bind(kFactNumber)
      .bind(used)
      .run();
  lastNumber = used;
}

QByteArray StoreDatabase::fact(const QString &name) {
  StoreStatement statement(*this, storeSchema::kReadFact);
  return statement.bind(name).run().next() ? statement.bytes(0) : QByteArray();
}

void StoreDatabase::setFact(const QString &name, const QByteArray &bytes) {
  StoreStatement(*this, QStringLiteral("REPLACE INTO facts (name, value) VALUES (?, ?)"))
      .bind(name)
      .bind(bytes)
      .run();
}
