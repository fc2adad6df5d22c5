#include "keeper/library/StoreBatch.h"

#include "keeper/library/LibraryStore.h"
#include "keeper/library/StoreDatabase.h"

StoreBatch::StoreBatch(LibraryStore &store) : StoreBatch(store.database()) {}

StoreBatch::StoreBatch(StoreDatabase &database_, Kind kind) : database(database_) {
  database.begin(kind == Kind::FirstOfAll);
}

StoreBatch::~StoreBatch() {
  if (!isDone) database.rollBack();
}

void StoreBatch::commit() {
  isDone = true;
  database.commit();
}
