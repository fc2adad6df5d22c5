#pragma once

#include <vector>

#include "app/state/MergeState.h"
#include "repairs/MergeAction.h"
#include "repairs/MergePlan.h"

struct AppState;
class MergeJournal;
class PlaylistRepair;
class SharedPaths;

/// The merge of one group: the steps in their order. The kept track has counts, information, artwork and
/// playlists before the first other file goes. Each step asks for the cancel flag first. A worker's.
class GroupMerge {
 public:
  /// What it works with; all outlive it.
  struct Rooms {
    AppState &state;
    PlaylistRepair &playlists;
    MergeJournal &journal;
    SharedPaths &sharedPaths;
    const MergeSettings &settings;
  };
  /// The group's rows in the order of the table.
  GroupMerge(const Rooms &theRooms, const std::vector<Dictionary> &rows);

  /// Merges the group unless it lacks a mark, and adds what was done to the report.
  void run();

 private:
  using Unkept = GroupPlan::Unkept;

  bool isCancelled() const;
  void begin(MergeAction action);
  void mergePlayed();
  void copyInformation();
  void replaceInPlaylists();
  void notePlaylists(const Array &known);

  void dealWithRows();
  void dealWithRow(const Unkept &unkept);
  /// True if the row is done with and leaves the list.
  bool disposeOf(const Unkept &unkept, MergedGroup::Unkept &told);
  void collect(const Unkept &unkept, MergedGroup::Unkept &told);
  /// True if the track may go now.
  bool takeFileAway(const Unkept &unkept, MergedGroup::Unkept &told);
  bool copyToFolder(const Unkept &unkept, MergedGroup::Unkept &told);
  void removeTrack(const Unkept &unkept, MergedGroup::Unkept &told);
  bool keptFileIsThere();
  /// Another track, or the kept one, has this file too.
  bool isShared(const Unkept &unkept) const;
  void keepBooks(const Unkept &unkept);
  void dropRemainder();
  void fail(const QString &path, const QString &reason);

  Rooms rooms;
  GroupPlan plan;
  MergedGroup report;
  /// The rows that are still to be merged, the audio row among them.
  std::vector<Dictionary> left;
  QString keptPath;
};
