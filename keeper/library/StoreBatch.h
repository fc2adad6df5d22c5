#pragma once

class LibraryStore;
class StoreDatabase;

/// Makes all changes of its lifetime one transaction. Without `commit` they are all undone. Batches may nest:
/// the outermost counts, and one inside that was not committed undoes the whole.
class StoreBatch {
 public:
  explicit StoreBatch(LibraryStore &store);
  /// `FirstOfAll` for the one that makes the tables.
  enum class Kind { Usual, FirstOfAll };
  explicit StoreBatch(StoreDatabase &database, Kind kind = Kind::Usual);
  ~StoreBatch();
  StoreBatch(const StoreBatch &) = delete;
  StoreBatch &operator=(const StoreBatch &) = delete;
  /// Durable when it returns, if it is the outermost batch.
  void commit();

 private:
  StoreDatabase &database;
  bool isDone = false;
};
