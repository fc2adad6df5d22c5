#pragma once

#include <QSet>
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

#include "app/state/MergeState.h"
#include "repairs/MergeSettings.h"
#include "values/Value.h"

struct AppState;
class SharedPaths;

/// The path and the persistent ID of a row; empty if it has none.
const QString &pathOf(const Dictionary &row);
const QString &pidOf(const Dictionary &row);

/// What a merge will do to one group. A value: making it touches nothing.
struct GroupPlan {
  struct Unkept {
    Dictionary row;
    QString pid, path;
    qint64 bytes = 0;
    UnkeptFate fate = UnkeptFate::Gone;
  };
  struct Playlist {
    QString pid, name;
    qint64 entries = 0;
    /// Too long to be built anew: the kept track is added at its end.
    bool isHuge = false;
  };
  qint64 number = 0;
  /// The row whose track and file stay, and the one that gives the information; null if no row is marked so.
  Dictionary audioRow, infoRow;
  QString title;
  /// The rows in the order of the table, the audio row left out.
  std::vector<Unkept> unkept;
  /// The user's playlists that hold one of the unkept tracks.
  std::vector<Playlist> playlists;
  /// The path of a marked row's file that is gone, or a null one for a row without a path: then the group
  /// cannot be merged. Nothing if all are there.
  std::optional<QString> missingPath;

  /// Both marks are set: the group takes part.
  bool isMarked() const { return !audioRow.isNull() && !infoRow.isNull(); }
  bool copiesInformation() const { return isMarked() && !infoRow.isSame(audioRow); }
  /// The persistent IDs of the unkept rows, those without one and the kept track's left out.
  QStringList unkeptPIDs() const;
};

/// What a merge will do, in the order in which it does it. Made on the main thread while nothing runs.
struct MergePlan {
  MergeSettings settings;
  std::vector<GroupPlan> groups;
  /// Direct access is there to tell which playlists hold a track; without it none can be found.
  bool playlistsAreKnown = false;

  qint64 unkeptRows() const;
  /// The unkept files that go to the trash or to the folder, and their bytes.
  qint64 unkeptFiles() const;
  qint64 unkeptBytes() const;
};

/// The plan of one group, from its rows in the order of the table. Looks at files; does not look at
/// playlists. Any thread.
GroupPlan planOfGroup(const std::vector<Dictionary> &rows, const MergeSettings &settings);

/// Corrects the fates of files that several tracks have: each goes with the last of the rows that are not
/// kept, or not at all. `shared` counts the library's tracks as they are before the merge.
void adjustToSharedFiles(std::vector<GroupPlan> &groups, SharedPaths shared);

/// The groups' playlists: the user's own that hold an unkept track, in the library's order. An entry names
/// its track by the persistent ID, or by the number that the row has if playlist and row come from one load.
void addPlaylists(std::vector<GroupPlan> &groups, const Array &playlists);
/// The persistent IDs of the listed tracks that stand in one of the user's own playlists, in the same way.
QSet<QString> listedTracksInPlaylists(const Array &rows, const Array &playlists);

/// The plan of all marked groups of the list, playlists included: by direct access, or without it as they
/// were loaded. With numbers of groups, only of those.
MergePlan makeMergePlan(AppState &state, const MergeSettings &settings,
                        const std::vector<qint64> &groups = {});
