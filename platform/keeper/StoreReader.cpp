#include "platform/keeper/StoreReader.h"

#include <QFileInfo>
#include <QScopeGuard>
#include <QSqlError>
#include <QUrl>
#include <QVariant>
#include <atomic>
#include <utility>

#include "platform/keeper/StoreSchema.h"

namespace {

QString freshName() {
  static std::atomic<quint64> last = 0;
  return QStringLiteral("store reader %1").arg(++last);
}

/// True if all changes have gone from the log into the store's file.
bool hasNoLog(const QString &path) {
  const QFileInfo log(path + QStringLiteral("-wal"));
  return !log.exists() || log.size() == 0;
}

}  // namespace

StoreReader::StoreReader(const QString &path) : name(freshName()) {
  const QString options = QStringLiteral("QSQLITE_OPEN_READONLY;QSQLITE_BUSY_TIMEOUT=5000");
  connection = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
  opened = open(path, options) && isOurs();
  if (opened || !hasNoLog(path)) return;
  // Where nothing may be written beside the store it can be read only as a file that nobody changes.
  const QString address = QString::fromUtf8(QUrl::fromLocalFile(path).toEncoded());
  opened = open(address + QStringLiteral("?immutable=1"), options + QStringLiteral(";QSQLITE_OPEN_URI")) &&
           isOurs();
}

StoreReader::~StoreReader() {
  connection.close();
  connection = QSqlDatabase();
  QSqlDatabase::removeDatabase(name);
}

bool StoreReader::open(const QString &path, const QString &options) {
  connection.close();
  problem.clear();
  connection.setConnectOptions(options);
  connection.setDatabaseName(path);
  if (connection.open()) return true;
  problem = connection.lastError().text();
  return false;
}

bool StoreReader::isOurs() {
  const bool isStore =
      answer(QStringLiteral("PRAGMA application_id")).toInt() == storeSchema::kApplicationID &&
      answer(QStringLiteral("PRAGMA user_version")).toInt() == storeSchema::kVersion;
  if (!isStore && problem.isEmpty())
    problem = QStringLiteral("it is no library of Music Keeper, or one of another version");
  return isStore && refresh();
}

bool StoreReader::run(QSqlQuery &query) {
  if (query.exec()) return true;
  problem = query.lastError().text();
  return false;
}

bool StoreReader::refresh() {
  QSqlQuery asked(connection);
  if (!asked.exec(QStringLiteral("PRAGMA data_version")) || !asked.next()) {
    problem = asked.lastError().text();
    return false;
  }
  const qint64 now = asked.value(0).toLongLong();
  if (now == dataVersion) return true;
  recordKeys.clear();
  QSqlQuery listed(connection);
  listed.setForwardOnly(true);
  if (!listed.prepare(storeSchema::kReadKeys) || !run(listed)) return false;
  while (listed.next()) recordKeys.load(listed.value(0).toUInt(), listed.value(1).toString());
  if (listed.lastError().isValid()) {
    problem = listed.lastError().text();
    return false;
  }
  dataVersion = now;
  return true;
}

bool StoreReader::begin() {
  QSqlQuery begin(connection);
  if (begin.exec(QStringLiteral("BEGIN"))) return true;
  problem = begin.lastError().text();
  return false;
}

void StoreReader::end() {
  QSqlQuery(connection).exec(QStringLiteral("COMMIT"));
}

void StoreReader::hold() {
  held = held || begin();
}

void StoreReader::release() {
  if (std::exchange(held, false)) end();
}

bool StoreReader::visit(const QString &sql, const QVariantList &values,
                        const std::function<bool(const QSqlQuery &)> &row) {
  problem.clear();
  if (!held && !begin()) return false;
  const auto ended = qScopeGuard([this] {
    if (!held) end();
  });
  if (!refresh()) return false;
  QSqlQuery query(connection);
  query.setForwardOnly(true);
  if (!query.prepare(sql)) {
    problem = query.lastError().text();
    return false;
  }
  for (const QVariant &value : values) query.addBindValue(value);
  if (!run(query)) return false;
  while (query.next()) {
    if (!row(query)) return query.finish(), true;
  }
  if (query.lastError().isValid()) problem = query.lastError().text();
  return problem.isEmpty();
}

QVariant StoreReader::answer(const QString &sql, const QVariantList &values) {
  QSqlQuery query(connection);
  query.setForwardOnly(true);
  if (!query.prepare(sql)) {
    problem = query.lastError().text();
    return {};
  }
  for (const QVariant &value : values) query.addBindValue(value);
  return run(query) && query.next() ? query.value(0) : QVariant();
}
