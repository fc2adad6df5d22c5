#pragma once

#include <QString>
#include <QStringList>
#include <atomic>
#include <mutex>
#include <optional>
#include <vector>

#include "values/Date.h"

/// What became of the file of a row that was not kept, or what is to become of it.
enum class UnkeptFate {
  Trashed,
  /// Copied to the folder for unkept files, and deleted where it was once its track was gone.
  Moved,
  /// A copy of it stood in the folder already; deleted where it was once its track was gone.
  AlreadyInFolder,
  /// Could not be trashed; deleted, as the user wishes it for that case.
  Deleted,
  /// Stays with its track, which is collected in a playlist.
  Collected,
  /// The kept track has the same file.
  Shared,
  /// There was no file any more.
  Gone,
  /// The track told no path.
  NoPath,
};

/// What a merge did to one group, in the order in which it did it.
struct MergedGroup {
  struct Unkept {
    QString pid, path;
    /// Where a moved file stands now.
    QString newPath;
    qint64 bytes = 0;
    UnkeptFate fate = UnkeptFate::Gone;
    /// The track has left the library.
    bool removed = false;
    /// There was a file, and no track of the library names it any more.
    bool leftLibrary = false;
  };
  QString title;
  QString keptPID, infoPID, keptPath;
  std::vector<Unkept> unkept;
  /// The names of the playlists that hold the kept track now in place of another.
  QStringList playlists;
  /// The bytes by which the kept file has grown with what was written into it; negative if it shrank.
  qint64 keptGrowth = 0;
  /// A playlist that held a copy is too long to be built anew: the kept track was added at its end.
  bool wasAppended = false;
  /// All that was to be done with the group was done.
  bool complete = false;
};

/// Something that did not work, for the user.
struct MergeFailure {
  QString title;
  QString path;
  QString reason;
};

/// What must be the same behind a merge as before it, counted in the library.
struct MergeTotals {
  qint64 tracks = 0;
  qint64 plays = 0;
  qint64 skips = 0;
  qint64 playlistEntries = 0;
  qint64 files = 0;
  qint64 bytes = 0;
};

/// What a merge has done so far, all its runs together. The worker writes, the main thread reads a copy.
class MergeReport {
 public:
  struct Contents {
    std::vector<MergedGroup> groups;
    std::vector<MergeFailure> failures;
    /// The library before the first run and behind the last; nothing where it could not be counted.
    std::optional<MergeTotals> before, after;
  };

  /// Begins a new merge.
  void clear();
  void addGroup(MergedGroup group);
  void addFailure(MergeFailure failure);
  void setBefore(const std::optional<MergeTotals> &totals);
  /// `wrong`: the totals that are not what they must be, in place of those of an earlier run.
  void setAfter(const std::optional<MergeTotals> &totals, std::vector<MergeFailure> wrong);
  /// All failures, those of the totals last.
  Contents contents() const;

 private:
  mutable std::mutex guard;
  Contents mContents;
  std::vector<MergeFailure> wrongTotals;
};

/// What a merge keeps beyond one run.
struct MergeState {
  /// Rows dealt with in earlier runs of the same merge.
  qint32 mNumberCompletedBeforeRestart = 0;
  /// The merge goes on as soon as a folder has been chosen.
  bool mMergeAfterUnkeptFolderChosen = false;
  /// A script held the bridge's lock when the state was written, or gave no answer in time.
  std::atomic<bool> mScriptLockedBeforeRestart{false};
  /// Restarts in a row without a finished row.
  std::atomic<qint32> mNumberOfNoProgressRestarts{0};
  /// The command is given again because its run got stuck: the report goes on.
  bool mGoesOnAfterStall = false;
  /// When the run last finished a row.
  Date lastProgress;
  /// Tracks that a worker has looked at for the totals: signs of life while it can finish no row.
  std::atomic<qint64> countingSteps{0};
  /// The user wants the merge although nobody can tell which playlists hold a track.
  std::atomic<bool> mMergesWithoutPlaylists{false};
  MergeReport report;
};
