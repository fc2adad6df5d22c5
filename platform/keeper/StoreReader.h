#pragma once

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariantList>
#include <functional>

#include "platform/keeper/RecordKeys.h"

/// One read-only look into a store, as long as it lives: of the thread that makes it. Never writes to the
/// store and never waits for the keeper longer than a few seconds.
class StoreReader {
 public:
  /// Opens the store at a path. Also without a keeper, and in a folder that may only be read.
  explicit StoreReader(const QString &path);
  StoreReader(const StoreReader &) = delete;
  ~StoreReader();

  bool isOpen() const { return opened; }
  /// Why it is not open, or what the last question met; one line, empty if all is well.
  const QString &error() const { return problem; }

  /// From one to the other all answers are of the same moment. Not nested.
  void hold();
  void release();
  bool isHeld() const { return held; }

  /// Asks, and shows each row until `row` answers false; all of the answer is of one moment. False if the
  /// store cannot be read to the end; `error` then says why.
  [[nodiscard]] bool visit(const QString &sql, const QVariantList &values,
                           const std::function<bool(const QSqlQuery &)> &row);
  /// The first value of the first row; invalid if there is none.
  QVariant answer(const QString &sql, const QVariantList &values = {});

  /// The keys of the records that are being visited.
  const RecordKeys &keys() const { return recordKeys; }
  /// Another number once the store has changed, seen at each question.
  qint64 version() const { return dataVersion; }

 private:
  bool open(const QString &path, const QString &options);
  bool isOurs();
  bool begin();
  void end();
  bool refresh();
  bool run(QSqlQuery &query);

  const QString name;
  QSqlDatabase connection;
  RecordKeys recordKeys;
  qint64 dataVersion = -1;
  bool opened = false;
  bool held = false;
  QString problem;
};
