#include "keeper/library/StoreStatement.h"

#include <QSqlError>

#include "keeper/library/StoreDatabase.h"

StoreStatement::StoreStatement(StoreDatabase &database_, const QString &sql_)
    : database(database_), sql(sql_) {
  StoreDatabase::Pool &pool = database.statements[sql];
  if (!pool.empty()) {
    query = std::move(pool.back());
    pool.pop_back();
    return;
  }
  query = std::make_unique<QSqlQuery>(database.connection);
  query->setForwardOnly(true);
  if (!query->prepare(sql)) database.fail(query->lastError(), QStringLiteral("read"));
}

StoreStatement::~StoreStatement() {
  // An unfinished one would keep an old state of the file alive.
  query->finish();
  database.statements[sql].push_back(std::move(query));
}

StoreStatement &StoreStatement::bind(const QVariant &value) {
  query->bindValue(bound++, value);
  return *this;
}

StoreStatement &StoreStatement::run() {
  bound = 0;
  if (!query->exec()) {
    database.fail(query->lastError(), query->isSelect() ? QStringLiteral("read") : QStringLiteral("write"));
  }
  return *this;
}

bool StoreStatement::next() {
  if (query->next()) return true;
  if (query->lastError().isValid()) database.fail(query->lastError(), QStringLiteral("read"));
  return false;
}
