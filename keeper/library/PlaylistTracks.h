#pragma once

#include "keeper/library/KeeperContext.h"
#include "keeper/script/ScriptObject.h"

/// The tracks of one playlist by a class of tracks: "track" for all, "file track", "url track", "shared
/// track"; the other classes of tracks have none here.
class PlaylistTracks {
 public:
  PlaylistTracks(KeeperContext &context, PlaylistRow playlist, const QString &className);

  qsizetype count();
  ScriptObjects all();
  /// Null if the index, from 0, is out of range.
  ScriptObjectPtr at(qsizetype index);
  /// By persistent ID, database ID, name, artist, location and the flags that the store keeps; nothing for
  /// other properties and for values of a type that they do not have.
  std::optional<ScriptObjects> where(const QString &property, const ScriptValue &value);
  /// Nothing for a property that no key tells.
  std::optional<ScriptListItems> column(const QString &property);

 private:
  ScriptObjectPtr object(TrackRow track, qint64 position) const;
  std::optional<TrackRows> candidates(const QString &property, const ScriptValue &value);
  bool isOfClass(TrackRow track);
  /// The entries that are of the class, in order; of the library with position 0.
  std::vector<PlaylistEntry> entries();

  KeeperContext &context;
  PlaylistRow playlist;
  bool isLibrary;
  /// A track is of the class if these bits of its flags are those.
  int mask = 0, flags = 0;
};
