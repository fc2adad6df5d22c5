#pragma once

#include <QSet>
#include <vector>

#include "app/state/MergeState.h"
#include "repairs/MergeAction.h"
#include "repairs/MergePlan.h"
#include "repairs/MergeRooms.h"

/// The merge of one group: the steps in their order. The kept track has counts, information, artwork and
/// playlists before the first other file goes. Each step asks for the cancel flag first. A worker's.
class GroupMerge {
 public:
  /// The group's rows in the order of the table.
  GroupMerge(const MergeRooms &theRooms, const std::vector<Dictionary> &rows);

  /// Merges the group unless it lacks a mark, and adds what was done to the report, behind an exception too.
  void run();

 private:
  using Unkept = GroupPlan::Unkept;

  void begin(MergeAction action) const;
  void walk();
  void mergePlayed();
  void copyInformation();
  /// False if places would be lost with the rows: then all of them stay.
  bool replaceInPlaylists();
  /// Tells that nobody knows the group's playlists; false.
  [[nodiscard]] bool leaveInPlaylists() const;
  /// One of the tracks stands in a playlist of the user, as far as anybody knows.
  bool areInPlaylists(const QStringList &pids) const;
  /// Tells what the replacement did, whose answer is `result`; false if it could not change one of them.
  bool havePlaylistsTaken(const QString &result);
  void dealWithRows();
  void keepBooks(const Unkept &unkept);
  void dropRemainder() const;
  void tell();

  MergeRooms rooms;
  GroupPlan plan;
  MergedGroup report;
  /// The rows that are still to be merged, the audio row among them.
  std::vector<Dictionary> left;
  QString keptPath;
  qint64 sizeBefore = 0;
  /// The tracks whose plays could not be merged.
  QSet<QString> openPlays;
};
