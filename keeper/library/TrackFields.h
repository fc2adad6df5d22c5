#pragma once

#include <QString>
#include <functional>
#include <vector>

#include "keeper/library/StoreRows.h"
#include "keeper/script/ScriptValue.h"

/// Where the keys of a track come from: the store, or a record at hand.
using KeyReader = std::function<Value(Key)>;

/// A property of tracks that is made of the library's own keys, and what a change of it makes of them: absent
/// keys read as empty, 0, false or missing value, and a property that is set to such a value removes its key.
struct TrackField {
  QString term;
  /// The one key that it is made of; the absent key if there are several.
  Key key;
  std::function<ScriptValue(const KeyReader &)> read;
  /// The changes for a new value; throws -10006 for one that does not fit. Empty for a property that can only
  /// be read.
  std::function<KeyChanges(const ScriptValue &, const KeyReader &)> write;
};

/// All of them, in the order in which `properties` lists them. Made at the first call, then only read.
const std::vector<TrackField> &trackFields();
/// Null for any other term.
const TrackField *trackField(const QString &term);

/// "3:05", "1:01:02"; of nothing "0:00".
QString durationText(qint64 seconds);
