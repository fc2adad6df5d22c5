#pragma once

#include <QtGlobal>
#include <vector>

#include "values/Value.h"

/// A track in a store. The same track has the same row for ever, and a row is never given to another one;
/// rows ascend in the library's order.
enum class TrackRow : qint64 { None = 0 };
/// A playlist in a store; the same rules, except that the library's order is its own.
enum class PlaylistRow : qint64 { None = 0 };

using TrackRows = std::vector<TrackRow>;
using PlaylistRows = std::vector<PlaylistRow>;

/// Keys to be stored in a record: a null value removes its key.
using KeyChanges = std::vector<DictionaryEntry>;

/// A place in a playlist. `position` names the place until the playlist is rearranged as a whole; it ascends
/// in the playlist's order and may have gaps.
struct PlaylistEntry {
  qint64 position = 0;
  TrackRow track = TrackRow::None;
};

/// What is known of a playlist without its record.
struct PlaylistInfo {
  PlaylistRow row = PlaylistRow::None;
  quint64 persistentID = 0;
  QString name;
  /// The folder that it lies in; none at the top.
  PlaylistRow parent = PlaylistRow::None;
  /// Bits of `storeSchema::PlaylistFlag`.
  int flags = 0;
  /// 0 for the user's own.
  qint64 distinguishedKind = 0;
};
