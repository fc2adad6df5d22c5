#pragma once

#include <QVariant>
#include <functional>

#include "keeper/library/StoreRows.h"

/// What stands beside a record in its row, so that it can be searched for.
struct TrackColumns {
  QString name;
  QString artist;
  QString location;
  int flags = 0;

  static TrackColumns of(const Dictionary &track);
  bool operator==(const TrackColumns &) const = default;
};

struct PlaylistColumns {
  QString name;
  std::optional<quint64> parent;
  int flags = 0;
  qint64 distinguishedKind = 0;

  static PlaylistColumns of(const Dictionary &playlist);
};

/// How texts are folded for the columns: texts that are equal without regard to case become one.
QString foldedText(const QString &text);
/// A text as a parameter, SQL's NULL for the empty one.
QVariant textOrNull(const QString &text);
/// A persistent ID as the store's signed number.
inline QVariant storedID(quint64 id) {
  return qint64(id);
}

/// A record with changes; the source stays as it is. A key that is there keeps its place, a new one goes
/// before `newKeysBefore` if the record has that, else to the end. Keys for which `isFixed` holds are left
/// alone.
Dictionary withChanges(const Dictionary &record, const KeyChanges &changes, Key newKeysBefore,
                       const std::function<bool(Key)> &isFixed);
