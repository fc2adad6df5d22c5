#include "keeper/library/StoreSnapshot.h"

#include "keeper/library/StoreDatabase.h"

StoreSnapshot::StoreSnapshot(StoreDatabase &of) {
  if (of.isInTransaction()) return;
  of.execute(QStringLiteral("BEGIN"));
  database = &of;
}

StoreSnapshot::~StoreSnapshot() {
  if (database) QSqlQuery(database->connection).exec(QStringLiteral("COMMIT"));
}
