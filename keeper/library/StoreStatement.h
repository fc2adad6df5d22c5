#pragma once

#include <QSqlQuery>
#include <QVariant>
#include <memory>

class StoreDatabase;

/// One run of a kept statement. Its rows are there until it ends; it must end before a transaction does.
class StoreStatement {
 public:
  StoreStatement(StoreDatabase &database, const QString &sql);
  ~StoreStatement();
  StoreStatement(const StoreStatement &) = delete;
  StoreStatement &operator=(const StoreStatement &) = delete;

  /// Gives the next parameter a value; the null `QVariant` is SQL's NULL.
  StoreStatement &bind(const QVariant &value);
  /// Runs it with the parameters bound since the last run.
  StoreStatement &run();
  bool next();

  QVariant value(int column) const { return query->value(column); }
  qint64 integer(int column) const { return query->value(column).toLongLong(); }
  QString text(int column) const { return query->value(column).toString(); }
  QByteArray bytes(int column) const { return query->value(column).toByteArray(); }
  bool isNull(int column) const { return query->isNull(column); }
  qint64 insertedRow() const { return query->lastInsertId().toLongLong(); }

 private:
  StoreDatabase &database;
  QString sql;
  std::unique_ptr<QSqlQuery> query;
  int bound = 0;
};
