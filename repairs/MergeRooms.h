#pragma once

#include <QSet>
#include <QString>

struct AppState;
class GroupRows;
class MergeJournal;
struct MergeSettings;
class PlaylistMembers;
class PlaylistRepair;
class SharedPaths;

/// What the merge of a group works with; all outlive it. The run's thread.
struct MergeRooms {
  AppState &state;
  PlaylistRepair &playlists;
  MergeJournal &journal;
  SharedPaths &sharedPaths;
  const GroupRows &groups;
  /// The listed tracks that stood in one of the user's playlists as these were loaded. Later readings may
  /// come from the library's file, which names no track by its persistent ID.
  const QSet<QString> &inLoadedPlaylists;
  PlaylistMembers &playlistMembers;
  const MergeSettings &settings;

  [[nodiscard]] bool isCancelled() const;
  /// Puts something that did not work into the report, under the title of the group in work.
  void fail(const QString &path, const QString &reason) const;
};
