#pragma once

#include <QByteArray>
#include <vector>

#include "keeper/library/StoreRows.h"

class StoreDatabase;

/// Writes a playlist's entries from position 1 on, many to a statement. Within a transaction; throws
/// `StoreError`. `flush` ends it.
class EntryWriter {
 public:
  EntryWriter(StoreDatabase &into, PlaylistRow of) : database(into), playlist(of) {}
  /// `record` is empty for an item that has nothing but its "Track ID".
  void add(TrackRow track, const QByteArray &record);
  void flush();

 private:
  struct Row {
    TrackRow track;
    QByteArray record;
  };
  void write(size_t from, size_t count);

  StoreDatabase &database;
  PlaylistRow playlist;
  std::vector<Row> waiting;
  qint64 position = 0;
};
