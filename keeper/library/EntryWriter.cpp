#include "keeper/library/EntryWriter.h"

#include "keeper/library/StoreDatabase.h"
#include "keeper/library/StoreStatement.h"

namespace {

/// Below the least number of parameters that every SQLite takes, by four to a row.
constexpr size_t kRowsAtOnce = 200;

QString statementFor(size_t rows) {
  const QString row = QStringLiteral("(?, ?, ?, ?)");
  QString sql = QStringLiteral("INSERT INTO entries (playlist, position, track, record) VALUES ") + row;
  for (size_t number = 1; number < rows; ++number) sql += QStringLiteral(", ") + row;
  return sql;
}

}  // namespace

void EntryWriter::add(TrackRow track, const QByteArray &record) {
  waiting.push_back({track, record});
  if (waiting.size() < kRowsAtOnce) return;
  write(0, kRowsAtOnce);
  waiting.clear();
}

void EntryWriter::write(size_t from, size_t count) {
  static const QString many = statementFor(kRowsAtOnce);
  static const QString one = statementFor(1);
  StoreStatement statement(database, count == 1 ? one : many);
  for (size_t index = from; index < from + count; ++index) {
    const Row &row = waiting[index];
    statement.bind(qint64(playlist)).bind(++position).bind(qint64(row.track));
    statement.bind(row.record.isEmpty() ? QVariant() : QVariant(row.record));
  }
  statement.run();
}

void EntryWriter::flush() {
  for (size_t index = 0; index < waiting.size(); ++index) write(index, 1);
  waiting.clear();
}
