#pragma once

class StoreDatabase;

/// Sees one state of the library from its first statement to its end, whatever other connections commit.
/// Inside a transaction it does nothing.
class StoreSnapshot {
 public:
  explicit StoreSnapshot(StoreDatabase &database);
  ~StoreSnapshot();
  StoreSnapshot(const StoreSnapshot &) = delete;
  StoreSnapshot &operator=(const StoreSnapshot &) = delete;

 private:
  StoreDatabase *database = nullptr;
};
